// A summary with rows that can be copied and saved.

#include "BatchListPage.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeView>

#include "TestMain.h"

class tst_BatchListPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyPageCannotBeCopiedOrSaved()
    {
        const BatchListPage page({"A", "B"});

        for (const QPushButton* button : page.findChildren<QPushButton*>())
            QVERIFY(!button->isEnabled());
    }

    void contentIsShown()
    {
        BatchListPage page({"A", "B"});

        page.SetContent({"2 <b>rows", 2, [](int row) { return QStringList(QString::number(row)); }, nullptr});

        const auto* view = page.findChild<QTreeView*>();
        QCOMPARE(view->model()->rowCount(), 2);
        QCOMPARE(view->accessibleName(), QString("2 <b>rows"));
        QCOMPARE(page.findChild<QLabel*>()->text(), QString("2 <b>rows"));
        QCOMPARE(page.findChild<QLabel*>()->textFormat(), Qt::PlainText);
    }

    void theLastColumnHasTheRoomThatTheOthersLeave()
    {
        BatchListPage page({"A", "B", "C"});
        page.resize(600, 300);
        page.show();
        auto* view = page.findChild<QTreeView*>();
        QHeaderView* header = view->header();

        QVERIFY(header->sectionSize(2) > header->sectionSize(1));
        QCOMPARE(header->length(), view->viewport()->width());
        header->resizeSection(1, header->sectionSize(1) + 50);
        QCOMPARE(header->length(), view->viewport()->width());
    }

    void chosenRowIsShownInFull()
    {
        BatchListPage page({"A", "B"});
        const auto* row = page.findChild<QPlainTextEdit*>("m_pRow");
        QVERIFY(row->isHidden());
        const QString place = QString(60, 'p');
        page.SetContent({"2 rows", 2,
                         [place](int i) {
                             return QStringList({QString::number(i), place});
                         },
                         nullptr});
        page.resize(200, 300);
        page.show();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        QVERIFY(row->isVisible());
        QCOMPARE(row->toPlainText(), "0\n" + place);

        auto* view = page.findChild<QTreeView*>();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->visualRect(view->model()->index(1, 0)).center());
        QCOMPARE(row->toPlainText(), "1\n" + place);
        page.SetContent({});

        QVERIFY(row->isHidden());
    }

    void copyTakesTheText()
    {
        BatchListPage page({"A"});
        page.SetContent(text("the text"));
        page.show();

        QTest::mouseClick(button(page, "Copy"), Qt::LeftButton);

        QCOMPARE(QGuiApplication::clipboard()->text(), QString("the text"));
        QCOMPARE(page.GetText(), QString("the text"));
    }

    void saveIsLeftToTheWindow()
    {
        BatchListPage page({"A"});
        page.SetContent(text("the text"));
        page.show();
        QSignalSpy asked(&page, &BatchListPage::SaveAsked);

        QTest::mouseClick(button(page, "Save As..."), Qt::LeftButton);

        QCOMPARE(asked.size(), 1);
    }

    void textIsSaved()
    {
        const QTemporaryDir folder;
        BatchListPage page({"A"});
        page.SetContent(text(QString::fromUtf8("gr\xc3\xbc\xc3\x9f\n")));
        QString error;

        QVERIFY(page.SaveText(folder.filePath("a.txt"), &error));

        QFile file(folder.filePath("a.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("gr\xc3\xbc\xc3\x9f\n"));
        QVERIFY(error.isEmpty());
    }

    void aPlaceThatCannotBeWrittenIsToldWithAReason()
    {
        BatchListPage page({"A"});
        page.SetContent(text("the text"));
        QString error;

        QVERIFY(!page.SaveText("/nowhere/at/all.txt", &error));

        QVERIFY(!error.isEmpty());
        QVERIFY(!page.SaveText("/nowhere/at/all.txt", nullptr));
    }

private:
    static BatchListPage::Content text(const QString& text)
    {
        return {"1", 0, nullptr, [text] { return text; }};
    }
    static QPushButton* button(const BatchListPage& page, const QString& text)
    {
        for (QPushButton* each : page.findChildren<QPushButton*>())
        {
            if (each->text().remove('&') == text)
                return each;
        }
        return nullptr;
    }
};

NV_TEST_MAIN(tst_BatchListPage)
#include "tst_BatchListPage.moc"
