// The dialog that refines a selection: what its boxes do, what the canvas shows meanwhile, how it is
// answered.

#include "RefineDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "ModalDriver.h"
#include "NVDocumentView.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QSize Size(300, 200);

QImage Square()
{
    return RectangleMask(Size, QRectF(50, 40, 100, 60));
}

struct Canvas
{
    Canvas()
        : document(PlainPicture(Qt::gray), QString(), "Picture"),
          view(document.GetModel()),
          outline(new SelectionOutline(document.GetPixels(), &view))
    {
        document.GetPixels()->SetSelectionMask(Square());
        view.resize(500, 400);
        view.show();
        view.Scale(1 / view.GetScale(), QPointF());
    }
    bool isLineAt(double x, double y)
    {
        const QPointF place = view.MapFromDocument(QPointF(x, y));
        const QColor color = view.viewport()->grab().toImage().pixelColor(int(std::floor(place.x())),
                                                                          int(std::floor(place.y())));
        return color == Qt::black || color == Qt::white;
    }

    Document document;
    NVDocumentView view;
    SelectionOutline* outline;
};

void Type(QWidget* window, const char* name, const QString& text)
{
    auto* box = window->findChild<QSpinBox*>(name);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, text);
}

} // namespace

class tst_RefineDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itStartsWithTheSelectionAsItIs()
    {
        RefineDialog dialog(Square(), nullptr);
        QCOMPARE(dialog.GetMask(), Square());
        QVERIFY(!dialog.IsWorking());
        for (const char* name : {"m_pSmooth", "m_pGrow", "m_pShrink", "m_pFeather"})
        {
            const auto* box = dialog.findChild<QSpinBox*>(name);
            QCOMPARE(box->value(), 0);
            QCOMPARE(box->minimum(), 0);
        }
        QCOMPARE(dialog.findChild<QSpinBox*>("m_pSmooth")->maximum(), RefineDialog::MaxSmooth);
        QCOMPARE(dialog.findChild<QSpinBox*>("m_pGrow")->maximum(), RefineDialog::MaxGrowth);
        QCOMPARE(dialog.findChild<QSpinBox*>("m_pShrink")->maximum(), RefineDialog::MaxGrowth);
        QCOMPARE(dialog.findChild<QSpinBox*>("m_pFeather")->maximum(), RefineDialog::MaxFeather);
    }

    void eachBoxDoesItsPart_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QImage>("expected");
        QTest::newRow("smooth") << "m_pSmooth" << SmoothMask(Square(), 12);
        QTest::newRow("grow") << "m_pGrow" << GrowMask(Square(), 12);
        QTest::newRow("shrink") << "m_pShrink" << ShrinkMask(Square(), 12);
        QTest::newRow("feather") << "m_pFeather" << FeatherMask(Square(), 12);
    }
    void eachBoxDoesItsPart()
    {
        QFETCH(QString, name);
        QFETCH(QImage, expected);
        RefineDialog dialog(Square(), nullptr);
        QSignalSpy refined(&dialog, &RefineDialog::Refined);

        dialog.findChild<QSpinBox*>(name)->setValue(12);

        QTRY_COMPARE(refined.count(), 1);
        QCOMPARE(dialog.GetMask(), expected);
    }

    void typedNumbersAreShownOnTheCanvasAndCancelTakesThemBack()
    {
        Canvas canvas;
        ModalDriver driver(
            [&](QWidget* window)
            {
                Type(window, "m_pGrow", "20");
                QTRY_VERIFY(canvas.isLineAt(30.5, 70.5));
                QVERIFY(!canvas.isLineAt(50.5, 70.5));
                // The selection itself is what it was.
                QCOMPARE(canvas.document.GetPixels()->GetSelectionMask(), Square());
                ModalDriver::Press(window, "Cancel");
            });
        {
            RefineDialog dialog(Square(), canvas.outline);
            QCOMPARE(dialog.Exec(), int(KXDialog::ResultRejected));
        }
        QVERIFY(driver.Finished());
        QVERIFY(canvas.isLineAt(50.5, 70.5));
        QVERIFY(!canvas.isLineAt(30.5, 70.5));
    }

    void okWaitsForTheWork()
    {
        const QSize large(1600, 1200);
        const QImage mask = EllipseMask(large, QRectF(300, 300, 900, 700));
        RefineDialog dialog(mask, nullptr);
        ModalDriver driver(
            [&](QWidget* window)
            {
                window->findChild<QSpinBox*>("m_pGrow")->setValue(30);
                QVERIFY(dialog.IsWorking());
                ModalDriver::Press(window, "OK");
            });

        QCOMPARE(dialog.Exec(), int(KXDialog::ResultAccepted));

        QVERIFY(driver.Finished());
        QVERIFY(!dialog.IsWorking());
        QCOMPARE(dialog.GetMask(), GrowMask(mask, 30));
    }

    void cancelDoesNotWait()
    {
        const QSize large(4000, 3000);
        RefineDialog dialog(EllipseMask(large, QRectF(300, 300, 3000, 2000)), nullptr);
        ModalDriver driver(
            [&](QWidget* window)
            {
                window->findChild<QSpinBox*>("m_pGrow")->setValue(200);
                ModalDriver::Press(window, "Cancel");
            });
        QCOMPARE(dialog.Exec(), int(KXDialog::ResultRejected));
        QVERIFY(driver.Finished());
        QVERIFY(dialog.IsWorking());
    }

    void whatWouldLeaveNothingCannotBeTaken()
    {
        RefineDialog dialog(Square(), nullptr);
        QPushButton* ok = nullptr;
        for (QPushButton* button : dialog.findChildren<QPushButton*>())
            ok = button->isDefault() ? button : ok;
        QVERIFY(ok && ok->isEnabled());
        const auto* note = dialog.findChild<QLabel*>("m_pNote");
        const QString plain = note->text();

        dialog.findChild<QSpinBox*>("m_pShrink")->setValue(50);
        QTRY_VERIFY(!ok->isEnabled());
        QVERIFY(note->text() != plain);
        dialog.findChild<QSpinBox*>("m_pShrink")->setValue(20);
        QTRY_VERIFY(ok->isEnabled());
        QCOMPARE(note->text(), plain);
    }

    void theButtonsStayWhereTheyAreWhateverIsSaid()
    {
        RefineDialog dialog(Square(), nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        const QWidget* buttons = dialog.findChild<QDialogButtonBox*>();
        const QString before = dialog.findChild<QLabel*>("m_pNote")->text();
        const QPoint place = buttons->mapTo(&dialog, QPoint());

        Type(&dialog, "m_pShrink", "90");
        QTRY_VERIFY(!dialog.IsWorking());
        QCoreApplication::processEvents();

        QVERIFY(dialog.findChild<QLabel*>("m_pNote")->text().length() < before.length());
        QCOMPARE(buttons->mapTo(&dialog, QPoint()), place);
    }

    void onlyTheLastNumberCounts()
    {
        RefineDialog dialog(Square(), nullptr);
        QSignalSpy refined(&dialog, &RefineDialog::Refined);
        for (int i = 1; i <= 30; ++i)
            dialog.findChild<QSpinBox*>("m_pGrow")->setValue(i);
        QTRY_VERIFY(!dialog.IsWorking());
        QCOMPARE(refined.count(), 1);
        QCOMPARE(dialog.GetMask(), GrowMask(Square(), 30));
    }

    void escapeCancels()
    {
        RefineDialog dialog(Square(), nullptr);
        ModalDriver driver([](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); });
        QCOMPARE(dialog.Exec(), int(KXDialog::ResultClosed));
        QVERIFY(driver.Finished());
    }

    void theBoxesAreReachedByTheirLetters()
    {
        RefineDialog dialog(Square(), nullptr);
        int buddies = 0;
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            buddies += label->buddy() && label->text().contains('&');
        QCOMPARE(buddies, 4);
    }

    void theCanvasMayGoFirst()
    {
        auto canvas = std::make_unique<Canvas>();
        RefineDialog dialog(Square(), canvas->outline);
        QSignalSpy refined(&dialog, &RefineDialog::Refined);
        canvas.reset();
        dialog.findChild<QSpinBox*>("m_pGrow")->setValue(3);
        QTRY_COMPARE(refined.count(), 1);
    }

    void itMayGoInTheMiddleOfTheWork()
    {
        auto dialog =
            std::make_unique<RefineDialog>(EllipseMask(QSize(4000, 3000), QRectF(0, 0, 4000, 3000)), nullptr);
        dialog->findChild<QSpinBox*>("m_pGrow")->setValue(200);
        QVERIFY(dialog->IsWorking());
        dialog.reset();
        QCoreApplication::processEvents();
    }
};

NV_TEST_MAIN(tst_RefineDialog)

#include "tst_RefineDialog.moc"
