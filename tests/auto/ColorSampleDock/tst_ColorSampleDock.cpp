// The panel of the colour samples in the editor: it follows the document, and the mouse works with it.

#include "ColorSampleDock.h"

#include <QListView>
#include <QMainWindow>
#include <QMenu>
#include <QUndoStack>

#include "ColorSamples.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "TestMain.h"

namespace
{

QImage Plain()
{
    QImage image(40, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(200, 0, 0));
    return image;
}

struct Host
{
    Host()
    {
        window.resize(500, 400);
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
        dock->SetDocument(document.get());
        for (int i = 0; i < 3; ++i)
            Samples()->Add(QPoint(i, i));
    }
    void Show()
    {
        dock->show();
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    ColorSamples* Samples() const { return ColorSamples::Of(document.get()); }
    QListView* List() const { return dock->findChild<QListView*>(); }
    QPoint Row(int row) const { return List()->visualRect(List()->model()->index(row, 0)).center(); }
    QList<int> Selected() const
    {
        QList<int> rows;
        for (const QModelIndex& index : List()->selectionModel()->selectedIndexes())
            rows.append(index.row());
        return rows;
    }
    // The name of the last step, which it takes back.
    QString Undo() const
    {
        const QString name = document->GetUndoStack()->undoText();
        document->GetUndoStack()->undo();
        return name;
    }
    void Choose(int row, const QString& entry)
    {
        QTest::mouseClick(List()->viewport(), Qt::RightButton, Qt::NoModifier, Row(row));
        auto* menu = dock->findChild<QMenu*>();
        QVERIFY(menu && menu->isVisible());
        for (QAction* action : menu->actions())
        {
            if (action->text() == entry)
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                                  menu->actionGeometry(action).center());
        }
        QTRY_VERIFY(!dock->findChild<QMenu*>());
    }

    std::unique_ptr<Document> document = std::make_unique<Document>(Plain(), QString(), "Picture");
    QMainWindow window;
    ColorSampleDock* dock = new ColorSampleDock(&window);
};

} // namespace

class tst_ColorSampleDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isClosedAtFirst()
    {
        Host host;
        host.window.show();

        QVERIFY(!host.dock->isVisible());
        QCOMPARE(host.dock->windowTitle(), QString("Colour Samples"));
        QCOMPARE(host.dock->objectName(), QString("ColorSampleDock"));
    }

    void currentSampleIsTheSelectedRow()
    {
        Host host;
        QCOMPARE(host.Selected(), QList<int>({2}));

        host.Samples()->SetCurrent(0);
        QCOMPARE(host.Selected(), QList<int>({0}));
        host.Samples()->Move(0, QPoint(9, 9));
        QCOMPARE(host.Selected(), QList<int>({0}));
        host.Samples()->Remove(2);
        QCOMPARE(host.Selected(), QList<int>({0}));
        host.Samples()->Remove(0);

        QCOMPARE(host.Selected(), QList<int>());
    }

    void clickedRowIsTheCurrentSample()
    {
        Host host;
        host.Show();

        QTest::mouseClick(host.List()->viewport(), Qt::LeftButton, Qt::NoModifier, host.Row(1));
        QCOMPARE(host.Samples()->GetCurrent(), 1);
        QCOMPARE(host.Selected(), QList<int>({1}));
        QTest::mouseClick(host.List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          host.List()->viewport()->rect().bottomLeft() - QPoint(-5, 5));

        QCOMPARE(host.Samples()->GetCurrent(), -1);
        QCOMPARE(host.Selected(), QList<int>());
    }

    void menuDeletesOne()
    {
        Host host;
        host.Show();

        host.Choose(1, "&Delete Sample");

        QCOMPARE(host.Samples()->Count(), 2);
        QCOMPARE(host.Samples()->GetPixel(1), QPoint(2, 2));
        QCOMPARE(host.Undo(), QString("Delete Colour Sample"));
        QCOMPARE(host.Samples()->GetPixel(1), QPoint(1, 1));
    }

    void menuDeletesAll()
    {
        Host host;
        host.Show();

        host.Choose(0, "Delete &All Samples");

        QCOMPARE(host.Samples()->Count(), 0);
        QCOMPARE(host.List()->model()->rowCount(), 0);
        QCOMPARE(host.Undo(), QString("Delete All Colour Samples"));
        QCOMPARE(host.List()->model()->rowCount(), 3);
    }

    void emptyAreaHasNoMenu()
    {
        Host host;
        host.Show();

        QTest::mouseClick(host.List()->viewport(), Qt::RightButton, Qt::NoModifier,
                          host.List()->viewport()->rect().bottomLeft() - QPoint(-5, 5));

        QVERIFY(!host.dock->findChild<QMenu*>());
    }

    void withoutADocumentAClickDoesNothing()
    {
        Host host;
        host.Show();
        host.dock->SetDocument(nullptr);

        QTest::mouseClick(host.List()->viewport(), Qt::RightButton, Qt::NoModifier, QPoint(5, 5));

        QCOMPARE(host.List()->model()->rowCount(), 0);
        QCOMPARE(host.Samples()->Count(), 3);
    }

    void otherDocumentHasOtherSamples()
    {
        Host host;
        Document other(Plain(), QString(), "Other");
        ColorSamples::Of(&other)->Add(QPoint(1, 1));

        host.dock->SetDocument(&other);
        QCOMPARE(host.List()->model()->rowCount(), 1);
        QCOMPARE(host.Selected(), QList<int>({0}));
        host.Samples()->SetCurrent(1);

        QCOMPARE(host.Selected(), QList<int>({0}));
        host.dock->SetDocument(nullptr);
    }

    void sideChangesTheColors()
    {
        Host host;
        host.document->GetPixels()->EditLayer(0).setPixelColor(0, 0, Qt::black);
        host.document->GetPixels()->NotifyChanged(QRect(0, 0, 1, 1));
        const auto color = [&host]
        { return host.List()->model()->index(0, 0).data(Qt::DecorationRole).value<QColor>(); };
        QTRY_COMPARE(color(), QColor(Qt::black));

        host.dock->SetSide(3);

        QCOMPARE(color(), QColor(150, 0, 0));
    }

    void delegateGoesWithTheDock()
    {
        auto dock = std::make_unique<ColorSampleDock>();
        const QPointer<QObject> delegate = dock->findChild<QListView*>()->itemDelegate();
        QVERIFY(delegate);

        dock.reset();

        QVERIFY(!delegate);
    }

    void documentMayGoFirst()
    {
        Host host;
        host.Show();

        host.document.reset();
        QTest::mouseClick(host.List()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));

        QCOMPARE(host.List()->model()->rowCount(), 0);
    }
};

NV_TEST_MAIN(tst_ColorSampleDock)
#include "tst_ColorSampleDock.moc"
