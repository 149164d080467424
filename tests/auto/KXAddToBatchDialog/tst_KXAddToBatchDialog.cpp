// The dialog of the batch scan: its form, what it shows, what reaches the model and when, and the refresh of
// a row.

#include <QDateTime>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QThreadPool>
#include <QTranslator>
#include <QtTest>

#include <utime.h>

#include "FolderTree.h"
#include "KXAddToBatchDialog.h"
#include "KXAddToBatchManager.h"
#include "KXBatchInputModel.h"
#include "ModalDriver.h"
#include "NVImageFileManager.h"
#include "ProbeImage.h"
#include "ScanLeak.h"
#include "SignalLog.h"
#include "SystemCalls.h"
#include "TestMain.h"

using Model = KXBatchInputModel;
using Dialog = KXAddToBatchDialog;
using Manager = KXAddToBatchManager;

namespace
{

// The formats "png" and "jpg" and what the plugins read.
struct Formats
{
    Formats() { manager.SetGroup("test", {"png", "jpg"}); }

    NVImageFileManager manager;
};

template <class T>
T* Find(const QObject* dialog, const char* name)
{
    T* control = dialog->findChild<T*>(name);
    if (!control)
        qFatal("no control %s", name);
    return control;
}

QLabel* FolderLabel(const QObject* dialog)
{
    return Find<QLabel>(dialog, "m_pFolder");
}

QLabel* FileLabel(const QObject* dialog)
{
    return Find<QLabel>(dialog, "m_pFile");
}

QProgressBar* Bar(const QObject* dialog)
{
    return Find<QProgressBar>(dialog, "m_pProgress");
}

Manager* ManagerOf(const QObject* dialog)
{
    return dialog->findChild<Manager*>(QString(), Qt::FindDirectChildrenOnly);
}

// Paths below a row, depth first.
QStringList PathsBelow(const Model& model, const QModelIndex& index)
{
    QStringList paths;
    for (int row = 0; row < model.rowCount(index); ++row)
    {
        const QModelIndex child = model.index(row, 0, index);
        paths << model.data(child, Model::NodePathRole).toString();
        paths += PathsBelow(model, child);
    }
    return paths;
}

// Never ends by itself.
void MakeEndless(const FolderTree& tree, const QByteArray& name)
{
    tree.File(name + "/a.png");
    tree.Link(".", name + "/one");
    tree.Link(".", name + "/two");
}

// A model that holds the folder "top" of the tree: a.png, in/b.png.
struct Filled
{
    Filled()
    {
        tree.Files({"top/a.png", "top/in/b.png"});
        Dialog(&model, nullptr).AddFolders({tree.Path("top")});
    }
    QModelIndex Top() const { return model.index(0, 0); }
    QModelIndex Row(const QByteArray& name) const { return model.FindPath(tree.Path(name)); }
    QVariant Role(const QByteArray& name, int role) const { return model.data(Row(name), role); }
    QString TopPath() const { return tree.Path("top"); }
    // A folder's date that differs from the stored one.
    void Age(const QByteArray& name, int seconds) const
    {
        const time_t time = time_t(QDateTime::currentSecsSinceEpoch() + seconds);
        const utimbuf times{time, time};
        QCOMPARE(::utime(tree.Bytes(name), &times), 0);
    }

    Formats formats;
    FolderTree tree;
    Model model;
};

// What is done to the model.
struct ModelLog
{
    explicit ModelLog(const Model* model)
        : inserted(model, &Model::rowsInserted),
          removed(model, &Model::rowsRemoved),
          changed(model, &Model::dataChanged)
    {
    }
    QSignalSpy inserted;
    QSignalSpy removed;
    QSignalSpy changed;
};

void Settle()
{
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Acts once, when the manager has told of so many items.
void AfterItems(Manager* manager, int count, const std::function<void()>& act)
{
    auto left = std::make_shared<int>(count);
    QObject::connect(manager, &Manager::ReadyAt, manager,
                     [left, act]
                     {
                         if (--*left == 0)
                             act();
                     });
}

class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject* object, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint;
        return QObject::eventFilter(object, event);
    }
    int Count() const { return m_count; }

private:
    int m_count = 0;
};

} // namespace

class tst_KXAddToBatchDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formIsAsStated();
    void interfaceIsAsHostsKnowIt();
    void sizeIsFixedToTheHint();
    void nothingIsCutOffInAnyFont_data();
    void nothingIsCutOffInAnyFont();
    void addsFoldersAndCloses();
    void addsFilesAndCloses();
    void emptyListClosesToo();
    void pathsThatAreNotThereLeaveTheModelEmpty();
    void modelIsUntouchedUntilTheEnd();
    void countsAreThoseOfFind();
    void labelsAndBarShowWhatTheManagerTells();
    void deliveryIsQueued();
    void labelsShowPlainText();
    void longTextsLoseTheirMiddle();
    void cancelLeavesNothing_data();
    void cancelLeavesNothing();
    void cancelledIsShown();
    void cancelAtEveryStage_data();
    void cancelAtEveryStage();
    void deletedInMidScan_data();
    void deletedInMidScan();
    void withoutAModelNothingHappens();
    void paintingIsGatedAndTextsAreExact();
    void windowThatIsPaintedAnewShowsItsTexts();
    void paintingWaitsForAnItem();
    void updateOfAFile();
    void updateOfAFileThatIsGone();
    void updateOfAFileThatCameBack();
    void updateOfAFolderThatIsGone();
    void updateOfAFolderThatGoesBetweenTwoLooks();
    void updateOfAFolderThatBecameAFile();
    void updateOfAnUnchangedFolder();
    void updateLooksAtFilesFirst();
    void endOfAnUpdateIsQueued();
    void updateOfAFileRemovesNothing();
    void updateByForce();
    void updateOfAChangedFolder();
    void updateOfAFolderWithAnOlderDate();
    void updateWithoutAStoredDate();
    void updateOfAnEmptiedFolder();
    void updateWithoutFormatsFindsFoldersOnly();
    void updateOfAFileRowThatBecameAFolder();
    void updateWithAnInvalidIndexEmptiesTheModel();
    void cancelledUpdateLeavesTheRow();
    void cancelAsTheScanEndsChangesNothing();
    void updateTakesAPathAsItIs();
    void dialogRunsOneScan();
    void addAndRefreshLeaveNothingBehind();
};

void tst_KXAddToBatchDialog::formIsAsStated()
{
    Model model;
    const Dialog dialog(&model, nullptr);
    const auto* grid = dialog.findChild<QGridLayout*>("gridLayout");
    QVERIFY(grid);
    QCOMPARE(grid->columnCount(), 1);
    QCOMPARE(grid->rowCount(), 4);
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), FolderLabel(&dialog));
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), Bar(&dialog));
    QCOMPARE(grid->itemAtPosition(2, 0)->widget(), FileLabel(&dialog));
    const auto* row = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(3, 0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->count(), 2);
    QVERIFY(row->itemAt(0)->spacerItem());
    auto* cancel = Find<QPushButton>(&dialog, "m_pCancelBtn");
    QCOMPARE(row->itemAt(1)->widget(), cancel);

    for (const QLabel* label : {FolderLabel(&dialog), FileLabel(&dialog)})
    {
        QCOMPARE(label->text(), QString("Add file: c\\:file.bmp"));
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(!label->openExternalLinks());
    }
    QCOMPARE(Bar(&dialog)->value(), 24);
    QCOMPARE(Bar(&dialog)->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    QCOMPARE(cancel->text(), QString("Cancel"));
    QCOMPARE(cancel->minimumSize(), QSize(124, 32));
    QCOMPARE(dialog.Content()->minimumSize(), QSize(400, 120));
    QCOMPARE(dialog.Content()->maximumSize(), QSize(400, 120));
    QCOMPARE(dialog.windowTitle(), QString());
}

void tst_KXAddToBatchDialog::interfaceIsAsHostsKnowIt()
{
    const QMetaObject& meta = Dialog::staticMetaObject;
    QCOMPARE(meta.superClass(), &KXDialog::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << meta.method(i).methodSignature();
    QCOMPARE(methods, QStringList({"OnRejected()", "OnFinish()", "OnUpdateFinish()"}));
    Model model;
    const Dialog dialog(&model, nullptr);
    QCOMPARE(ManagerOf(&dialog)->parent(), &dialog);
}

void tst_KXAddToBatchDialog::sizeIsFixedToTheHint()
{
    Model model;
    Dialog dialog(&model, nullptr);
    QCOMPARE(dialog.sizeHint(), QSize(400, 120));
    QCOMPARE(dialog.minimumSize(), dialog.sizeHint());
    QCOMPARE(dialog.maximumSize(), dialog.sizeHint());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(dialog.size(), QSize(400, 120));
    FileLabel(&dialog)->setText(QString(3000, 'm'));
    QCoreApplication::processEvents();
    QCOMPARE(dialog.size(), QSize(400, 120));
    QVERIFY(dialog.rect().contains(FileLabel(&dialog)->geometry()));
}

void tst_KXAddToBatchDialog::nothingIsCutOffInAnyFont_data()
{
    QTest::addColumn<qreal>("size");
    QTest::newRow("9") << 9.0;
    QTest::newRow("10") << 10.0;
    QTest::newRow("12") << 12.0;
}

void tst_KXAddToBatchDialog::nothingIsCutOffInAnyFont()
{
    QFETCH(qreal, size);
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPointSizeF(size);
    QApplication::setFont(font);
    Model model;
    Dialog dialog(&model, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    int bottom = 0;
    for (QWidget* control : {static_cast<QWidget*>(FolderLabel(&dialog)), static_cast<QWidget*>(Bar(&dialog)),
                             static_cast<QWidget*>(FileLabel(&dialog)),
                             static_cast<QWidget*>(Find<QPushButton>(&dialog, "m_pCancelBtn"))})
    {
        QVERIFY(control->geometry().top() > bottom);
        bottom = control->geometry().bottom();
        QVERIFY(control->height() >= control->minimumSizeHint().height());
    }
    QVERIFY(bottom < 120);
    dialog.hide();
    QApplication::setFont(before);
}

void tst_KXAddToBatchDialog::addsFoldersAndCloses()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "a/in/2.JPG", "a/note.txt", "b/3.png"});
    Model model;
    Dialog dialog(&model, nullptr);
    SignalLog log(&dialog);
    QCOMPARE(dialog.AddFolders({tree.Path("b"), tree.Path("a")}), int(KXDialog::ResultAccepted));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(log.Entries(), QStringList({"Finished(1)", "Accepted()"}));
    QCOMPARE(PathsBelow(model, {}),
             QStringList({tree.Path("a"), tree.Path("a/in"), tree.Path("a/in/2.JPG"), tree.Path("a/1.png"),
                          tree.Path("b"), tree.Path("b/3.png")}));
    QCOMPARE(model.GetFileCount(), 3);
    QVERIFY(ManagerOf(&dialog)->TakeResult().isEmpty());
}

void tst_KXAddToBatchDialog::addsFilesAndCloses()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"1.png", "2.png", "note.txt"});
    Model model;
    Dialog dialog(&model, nullptr);
    QCOMPARE(dialog.AddFiles({tree.Path("1.png"), tree.Path("note.txt"), tree.Path("2.png")}), 1);
    QCOMPARE(PathsBelow(model, {}), QStringList({tree.Path("1.png"), tree.Path("2.png")}));
}

void tst_KXAddToBatchDialog::emptyListClosesToo()
{
    Model model;
    QCOMPARE(Dialog(&model, nullptr).AddFolders({}), 1);
    QCOMPARE(Dialog(&model, nullptr).AddFiles({}), 1);
    QCOMPARE(model.rowCount(), 0);
}

void tst_KXAddToBatchDialog::pathsThatAreNotThereLeaveTheModelEmpty()
{
    Model model;
    const ModelLog log(&model);
    QCOMPARE(Dialog(&model, nullptr).AddFolders({"/nowhere", QString()}), 1);
    QCOMPARE(log.inserted.size() + log.changed.size(), 0);
}

void tst_KXAddToBatchDialog::modelIsUntouchedUntilTheEnd()
{
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a/1.png", "a/2.png", "b/3.png"});
    Model model;
    Dialog dialog(&model, nullptr);
    bool ended = false;
    connect(ManagerOf(&dialog), &Manager::ScanFinished, this, [&] { ended = true; });
    connect(&model, &Model::rowsInserted, this,
            [&]
            {
                QVERIFY(ended);
                QVERIFY(dialog.isVisible());
            });
    QCOMPARE(dialog.AddFolders({tree.Path("a"), tree.Path("b")}), 1);
    QVERIFY(ended);
    QCOMPARE(model.rowCount(), 2);
}

void tst_KXAddToBatchDialog::countsAreThoseOfFind()
{
    const Formats formats;
    const FolderTree tree;
    for (int i = 0; i < 500; ++i)
        tree.File("top/f" + QByteArray::number(i % 23) + "/in/" + QByteArray::number(i) +
                  (i % 3 ? ".png" : ".txt"));
    tree.Files({"top/.hidden.png", "top/.in/x.png", "top/n\nl.png", "top/<b>.png", "beside/x.png"});
    tree.Link("../beside", "top/way");
    Model model;
    Dialog(&model, nullptr).AddFolders({tree.Path("top")});
    QCOMPARE(model.GetFileCount(),
             FolderTree::CountOfFind(tree.Path("top"), formats.manager.GetSupportedReadFormats()));
    QCOMPARE(model.data(model.index(0, 0), Model::NodeFileCountRole).toInt(), model.GetFileCount());
}

void tst_KXAddToBatchDialog::labelsAndBarShowWhatTheManagerTells()
{
    Model model;
    Dialog dialog(&model, nullptr);
    Manager* manager = ManagerOf(&dialog);
    Q_EMIT manager->NewFolder("one");
    Q_EMIT manager->ReadyAt("two");
    Q_EMIT manager->ProgressChanged(0, 7);
    Q_EMIT manager->Progress(3);
    QCOMPARE(FolderLabel(&dialog)->text(), QString("Add file: c\\:file.bmp"));
    QCOMPARE(Bar(&dialog)->value(), 24);
    QCoreApplication::processEvents();
    QCOMPARE(FolderLabel(&dialog)->text(), QString("one"));
    QCOMPARE(FileLabel(&dialog)->text(), QString("two"));
    QCOMPARE(Bar(&dialog)->minimum(), 0);
    QCOMPARE(Bar(&dialog)->maximum(), 7);
    QCOMPARE(Bar(&dialog)->value(), 3);
}

void tst_KXAddToBatchDialog::deliveryIsQueued()
{
    const Formats formats;
    const FolderTree tree;
    tree.File("1.png");
    Model model;
    Dialog dialog(&model, nullptr);
    // In a dialog that is not open the end of the scan waits for the event loop.
    Q_EMIT ManagerOf(&dialog)->ScanFinished();
    SignalLog log(&dialog);
    QCOMPARE(log.Count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(log.Entries(), QStringList({"Finished(1)", "Accepted()"}));
    // One that is emitted before the dialog runs closes it.
    Dialog open(&model, nullptr);
    Q_EMIT ManagerOf(&open)->ScanFinished();
    QCOMPARE(open.Exec(), 1);
}

void tst_KXAddToBatchDialog::labelsShowPlainText()
{
    Model model;
    Dialog dialog(&model, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QLabel* label = FileLabel(&dialog);
    label->setText("File:/in/<b>bold.png");
    const ProbeImage tagged(label);
    label->setText("File:/in/bold.png");
    QVERIFY(tagged.Differs(ProbeImage(label)));
    label->setText("<img src=x> &amp; & x");
    const ProbeImage line(label);
    QVERIFY(line.ColorCount() > 1);
    // Neither a new line nor a picture makes it higher, nor is "&" a mark of anything.
    label->setText("one\ntwo");
    const ProbeImage broken(label);
    label->setText("one two");
    QVERIFY2(!broken.Differs(ProbeImage(label)), qPrintable(broken.FailureText()));
    label->setText("&a");
    const ProbeImage mark(label);
    label->setText("a");
    QVERIFY(mark.Differs(ProbeImage(label)));
}

void tst_KXAddToBatchDialog::longTextsLoseTheirMiddle()
{
    Model model;
    Dialog dialog(&model, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QLabel* label = FileLabel(&dialog);
    const QString head = "File:/home/someone/";
    const QString middle = QString("somewhere/").repeated(30);
    const auto drawn = [&](const QString& text)
    {
        label->setText(text);
        return ProbeImage(label);
    };
    const ProbeImage picture = drawn(head + middle + "picture 1.png");
    QVERIFY(picture.Differs(drawn(head + middle + "picture 2.png")));
    QVERIFY(picture.Differs(drawn("File:/home/anybody/" + middle + "picture 1.png")));
    QVERIFY(!picture.Differs(drawn(head + middle + middle + "picture 1.png")));
    QCOMPARE(label->text().size(), head.size() + 2 * middle.size() + 13);
}

void tst_KXAddToBatchDialog::cancelLeavesNothing_data()
{
    QTest::addColumn<int>("way");
    QTest::addColumn<int>("result");
    QTest::newRow("the button") << 0 << int(KXDialog::ResultRejected);
    QTest::newRow("space on the button") << 1 << int(KXDialog::ResultRejected);
    QTest::newRow("Escape") << 2 << int(KXDialog::ResultClosed);
    QTest::newRow("close of the window") << 3 << int(KXDialog::ResultClosed);
}

void tst_KXAddToBatchDialog::cancelLeavesNothing()
{
    QFETCH(int, way);
    QFETCH(int, result);
    const Formats formats;
    const FolderTree tree;
    MakeEndless(tree, "in");
    Model model;
    const ModelLog log(&model);
    Dialog dialog(&model, nullptr);
    ModalDriver driver(
        [way](QWidget* window)
        {
            if (way == 0)
                QVERIFY(ModalDriver::Press(window, "Cancel"));
            else if (way == 1)
                QTest::keyClick(Find<QPushButton>(window, "m_pCancelBtn"), Qt::Key_Space);
            else if (way == 2)
                ModalDriver::PressKey(window, Qt::Key_Escape);
            else
                ModalDriver::CloseWindow(window);
        });
    QSignalSpy finished(ManagerOf(&dialog), &Manager::ScanFinished);
    QCOMPARE(dialog.AddFolders({tree.Path("in")}), result);
    QVERIFY(driver.Finished());
    Settle();
    QCOMPARE(log.inserted.size() + log.changed.size(), 0);
    QCOMPARE(finished.size(), 0);
    QVERIFY(ManagerOf(&dialog)->TakeResult().isEmpty());
}

void tst_KXAddToBatchDialog::cancelledIsShown()
{
    Model model;
    Dialog dialog(&model, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    ManagerOf(&dialog)->Cancel();
    QCoreApplication::processEvents();
    QCOMPARE(FolderLabel(&dialog)->text(), QString("Cancelled"));
    QCOMPARE(FileLabel(&dialog)->text(), QString("Cancelled"));
    QVERIFY(dialog.isVisible());
}

void tst_KXAddToBatchDialog::cancelAtEveryStage_data()
{
    QTest::addColumn<int>("items");
    for (const int items : {1, 2, 3, 4, 6, 10, 100, 1000})
        QTest::addRow("after %d", items) << items;
}

void tst_KXAddToBatchDialog::cancelAtEveryStage()
{
    QFETCH(int, items);
    const Formats formats;
    const FolderTree tree;
    MakeEndless(tree, "in");
    Model model;
    Dialog dialog(&model, nullptr);
    AfterItems(ManagerOf(&dialog), items,
               [&dialog] { QMetaObject::invokeMethod(&dialog, &Dialog::Reject, Qt::QueuedConnection); });
    QCOMPARE(dialog.AddFolders({tree.Path("in")}), 0);
    Settle();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(FolderLabel(&dialog)->text(), QString("Cancelled"));
    QCOMPARE(FileLabel(&dialog)->text(), QString("Cancelled"));
}

void tst_KXAddToBatchDialog::deletedInMidScan_data()
{
    QTest::addColumn<int>("items");
    QTest::addColumn<bool>("withParent");
    for (const int items : {1, 2, 3, 10, 100})
    {
        QTest::addRow("after %d", items) << items << false;
        QTest::addRow("after %d, with its parent", items) << items << true;
    }
}

void tst_KXAddToBatchDialog::deletedInMidScan()
{
    QFETCH(int, items);
    QFETCH(bool, withParent);
    const Formats formats;
    const FolderTree tree;
    MakeEndless(tree, "in");
    Model model;
    QPointer<QWidget> parent(new QWidget);
    QPointer<Dialog> dialog(new Dialog(&model, parent));
    AfterItems(ManagerOf(dialog), items,
               [&]
               {
                   QTimer::singleShot(0, qApp,
                                      [&]
                                      {
                                          if (withParent)
                                              delete parent;
                                          else
                                              delete dialog;
                                      });
               });
    QCOMPARE(dialog->AddFolders({tree.Path("in")}), int(KXDialog::ResultClosed));
    QVERIFY(!dialog);
    Settle();
    QCOMPARE(model.rowCount(), 0);
    delete parent;
}

void tst_KXAddToBatchDialog::withoutAModelNothingHappens()
{
    Dialog dialog(nullptr, nullptr);
    dialog.Update(QModelIndex(), true);
    QVERIFY(!dialog.isVisible());
}

void tst_KXAddToBatchDialog::paintingIsGatedAndTextsAreExact()
{
    const Formats formats;
    const FolderTree tree;
    for (int i = 0; i < 300; ++i)
    {
        for (int j = 0; j < 5; ++j)
            tree.File("top/" + QByteArray::number(i) + '/' + QByteArray::number(j) + ".png");
    }
    Model model;
    Dialog dialog(&model, nullptr);
    Manager* manager = ManagerOf(&dialog);
    const PaintCounter folderPaints(FolderLabel(&dialog));
    const PaintCounter barPaints(Bar(&dialog));
    const PaintCounter filePaints(FileLabel(&dialog));
    int items = 0;
    int exact = 0;
    // Connected behind the label, so that it has the text by then.
    connect(
        manager, &Manager::ReadyAt, this,
        [&](const QString& text)
        {
            ++items;
            exact += FileLabel(&dialog)->text() == text;
        },
        Qt::QueuedConnection);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(dialog.AddFolders({tree.Path("top")}), 1);
    const int limit = int(clock.elapsed() / 33) + 3;
    QVERIFY(items > 1800);
    QCOMPARE(exact, items);
    for (const PaintCounter* counter : {&folderPaints, &barPaints, &filePaints})
        QVERIFY2(counter->Count() >= 1 && counter->Count() <= limit,
                 qPrintable(QString("%1 of %2").arg(counter->Count()).arg(limit)));
}

void tst_KXAddToBatchDialog::windowThatIsPaintedAnewShowsItsTexts()
{
    Model model;
    Dialog dialog(&model, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    Manager* manager = ManagerOf(&dialog);
    QLabel* label = FileLabel(&dialog);
    Q_EMIT manager->Progress(1);
    QCoreApplication::processEvents();
    QVERIFY(!label->updatesEnabled());
    QVERIFY(!Bar(&dialog)->updatesEnabled());

    const PaintCounter paints(label);
    Q_EMIT manager->ReadyAt("new");
    QCoreApplication::processEvents();
    QCOMPARE(paints.Count(), 0);
    dialog.update();
    QTRY_VERIFY(paints.Count() > 0);
    QVERIFY(label->updatesEnabled());

    Q_EMIT manager->Progress(2);
    QCoreApplication::processEvents();
    QVERIFY(!label->updatesEnabled());
    dialog.Reject();
    QVERIFY(label->updatesEnabled());
}

void tst_KXAddToBatchDialog::paintingWaitsForAnItem()
{
    Model model;
    Dialog dialog(&model, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    Manager* manager = ManagerOf(&dialog);
    // The bar tells of values that are new to it.
    int value = 1;
    QTRY_VERIFY((Q_EMIT manager->Progress(++value), !FileLabel(&dialog)->updatesEnabled()));
    const PaintCounter paints(FileLabel(&dialog));
    // A folder begins.
    Q_EMIT manager->ReadyAt(QString());
    QElapsedTimer clock;
    clock.start();
    QTRY_VERIFY((Q_EMIT manager->Progress(++value), clock.elapsed() >= 80));
    const int early = clock.elapsed() < 200 ? paints.Count() : 0;
    QCOMPARE(early, 0);
    Q_EMIT manager->ReadyAt("File:a");
    Q_EMIT manager->Progress(++value);
    QCoreApplication::processEvents();
    QCOMPARE(paints.Count(), 1);
    // But it does not wait forever.
    Q_EMIT manager->ReadyAt(QString());
    QTRY_COMPARE((Q_EMIT manager->Progress(++value), paints.Count()), 2);
}

void tst_KXAddToBatchDialog::updateOfAFile()
{
    Filled host;
    const ModelLog log(&host.model);
    Dialog dialog(&host.model, nullptr);
    host.model.setData(host.Row("top/a.png"), "old", Qt::ToolTipRole);
    dialog.Update(host.Row("top/a.png"), true);
    QCOMPARE(host.Role("top/a.png", Model::NodeExistsRole), QVariant(true));
    QCOMPARE(host.Role("top/a.png", Qt::ToolTipRole), QVariant(host.tree.Path("top/a.png")));
    QCOMPARE(log.inserted.size() + log.removed.size(), 0);
}

void tst_KXAddToBatchDialog::updateOfAFileThatIsGone()
{
    Filled host;
    const ModelLog log(&host.model);
    host.tree.Remove("top/a.png");
    Dialog dialog(&host.model, nullptr);
    SignalLog told(ManagerOf(&dialog));
    dialog.Update(host.Row("top/a.png"), true);
    QCOMPARE(host.Role("top/a.png", Model::NodeExistsRole), QVariant(false));
    QCOMPARE(host.Role("top/a.png", Model::NodeExistsRole).userType(), int(QMetaType::Bool));
    QCOMPARE(host.Role("top/a.png", Qt::ToolTipRole),
             QVariant(host.tree.Path("top/a.png") + " (not exists)"));
    QCOMPARE(log.inserted.size() + log.removed.size(), 0);
    QCOMPARE(told.Count(), 0);
    QVERIFY(!dialog.isVisible());
}

void tst_KXAddToBatchDialog::updateOfAFileThatCameBack()
{
    Filled host;
    host.tree.Remove("top/a.png");
    Dialog(&host.model, nullptr).Update(host.Row("top/a.png"), false);
    host.tree.File("top/a.png");
    Dialog(&host.model, nullptr).Update(host.Row("top/a.png"), false);
    QCOMPARE(host.Role("top/a.png", Model::NodeExistsRole), QVariant(true));
    QCOMPARE(host.Role("top/a.png", Qt::ToolTipRole), QVariant(host.tree.Path("top/a.png")));
}

void tst_KXAddToBatchDialog::updateOfAFolderThatIsGone()
{
    Filled host;
    host.tree.Remove("top/in/b.png");
    host.tree.Remove("top/in");
    Dialog dialog(&host.model, nullptr);
    SignalLog told(ManagerOf(&dialog));
    dialog.Update(host.Row("top/in"), true);
    QCOMPARE(host.model.rowCount(host.Row("top/in")), 0);
    QCOMPARE(host.Role("top/in", Model::NodeExistsRole), QVariant(false));
    QCOMPARE(host.Role("top/in", Qt::ToolTipRole), QVariant(host.tree.Path("top/in") + " (not exists)"));
    QCOMPARE(told.Count(), 0);
}

void tst_KXAddToBatchDialog::updateOfAFolderThatGoesBetweenTwoLooks()
{
    Filled host;
    host.tree.Remove("top/in/b.png");
    Dialog dialog(&host.model, nullptr);
    SignalLog told(ManagerOf(&dialog));
    QStringList steps;
    const QModelIndex row = host.Row("top/in");
    connect(&host.model, &Model::dataChanged, this,
            [&](const QModelIndex& index, const QModelIndex&, const QVector<int>& roles)
            {
                if (index == row && !roles.isEmpty())
                    steps << QString::number(roles.first());
            });
    connect(&host.model, &Model::rowsRemoved, this, [&] { steps << "removed"; });
    SystemCalls::behindNextLook = [&] { host.tree.Remove("top/in"); };
    dialog.Update(row, true);
    QVERIFY(!SystemCalls::behindNextLook);
    QCOMPARE(steps, QStringList({"261", "removed", "3"}));
    QCOMPARE(host.model.rowCount(row), 0);
    QCOMPARE(host.Role("top/in", Model::NodeExistsRole), QVariant(false));
    QCOMPARE(host.Role("top/in", Qt::ToolTipRole), QVariant(host.tree.Path("top/in") + " (not exists)"));
    QCOMPARE(told.Count(), 0);
}

void tst_KXAddToBatchDialog::updateOfAFolderThatBecameAFile()
{
    Filled host;
    host.tree.Remove("top/in/b.png");
    host.tree.Remove("top/in");
    host.tree.File("top/in");
    Dialog(&host.model, nullptr).Update(host.Row("top/in"), false);
    QCOMPARE(host.model.rowCount(host.Row("top/in")), 0);
    QCOMPARE(host.Role("top/in", Model::NodeExistsRole), QVariant(true));
    QCOMPARE(host.Role("top/in", Qt::ToolTipRole), QVariant(host.tree.Path("top/in")));
}

void tst_KXAddToBatchDialog::updateOfAnUnchangedFolder()
{
    Filled host;
    const QVariant date = host.Role("top", Model::NodeModifiedRole);
    host.model.setData(host.Top(), "old", Qt::ToolTipRole);
    host.model.setData(host.Top(), false, Model::NodeExistsRole);
    const ModelLog log(&host.model);
    Dialog dialog(&host.model, nullptr);
    SignalLog told(ManagerOf(&dialog));
    dialog.Update(host.Top(), false);
    QCOMPARE(host.Role("top", Qt::ToolTipRole), QVariant(host.TopPath()));
    QCOMPARE(host.Role("top", Model::NodeExistsRole), QVariant(true));
    QCOMPARE(host.Role("top", Model::NodeModifiedRole), date);
    QCOMPARE(log.inserted.size() + log.removed.size() + told.Count(), 0);
}

void tst_KXAddToBatchDialog::updateLooksAtFilesFirst()
{
    Filled host;
    QThreadPool* pool = QThreadPool::globalInstance();
    const int threads = pool->maxThreadCount();
    // One thread looks at them in their order.
    pool->setMaxThreadCount(1);
    Dialog dialog(&host.model, nullptr);
    SignalLog told(ManagerOf(&dialog));
    dialog.Update(host.Top(), true);
    pool->setMaxThreadCount(threads);
    QCOMPARE(told.Entries().filter("ReadyAt(\"F"),
             QStringList({"ReadyAt(\"File:" + host.tree.Path("top/a.png") + "\")",
                          "ReadyAt(\"Folder:" + host.tree.Path("top/in") + "\")",
                          "ReadyAt(\"File:" + host.tree.Path("top/in/b.png") + "\")"}));
}

void tst_KXAddToBatchDialog::endOfAnUpdateIsQueued()
{
    Filled host;
    Dialog dialog(&host.model, nullptr);
    dialog.Update(host.Top(), true);
    const ModelLog log(&host.model);
    // Once more, and without a result this time.
    Q_EMIT ManagerOf(&dialog)->ScanFinished();
    QCOMPARE(log.removed.size(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(log.removed.size(), 1);
    QCOMPARE(host.model.rowCount(host.Top()), 0);
}

void tst_KXAddToBatchDialog::updateOfAFileRemovesNothing()
{
    class Removals : public Model
    {
    public:
        bool removeRows(int row, int count, const QModelIndex& parent) override
        {
            ++calls;
            return Model::removeRows(row, count, parent);
        }
        int calls = 0;
    };
    const Formats formats;
    const FolderTree tree;
    tree.Files({"a.png", "in/b.png"});
    Removals model;
    Dialog(&model, nullptr).AddFiles({tree.Path("a.png"), tree.Path("in")});
    Dialog(&model, nullptr).Update(model.FindPath(tree.Path("a.png")), true);
    tree.Remove("a.png");
    Dialog(&model, nullptr).Update(model.FindPath(tree.Path("a.png")), true);
    QCOMPARE(model.calls, 0);
    tree.Remove("in/b.png");
    tree.Remove("in");
    Dialog(&model, nullptr).Update(model.FindPath(tree.Path("in")), true);
    QCOMPARE(model.calls, 1);
}

void tst_KXAddToBatchDialog::updateByForce()
{
    Filled host;
    const ModelLog log(&host.model);
    Dialog dialog(&host.model, nullptr);
    SignalLog told(&dialog);
    dialog.Update(host.Top(), true);
    QCOMPARE(told.Entries(), QStringList({"Finished(1)", "Accepted()"}));
    QVERIFY(!log.removed.isEmpty() && !log.inserted.isEmpty());
    QCOMPARE(
        PathsBelow(host.model, host.Top()),
        QStringList({host.tree.Path("top/in"), host.tree.Path("top/in/b.png"), host.tree.Path("top/a.png")}));
}

void tst_KXAddToBatchDialog::updateOfAChangedFolder()
{
    Filled host;
    host.tree.Files({"top/new.png", "top/in/deep.png"});
    host.tree.Remove("top/a.png");
    host.Age("top", 100);
    const QPersistentModelIndex top(host.Top());
    Dialog(&host.model, nullptr).Update(top, false);
    QVERIFY(top.isValid());
    QCOMPARE(PathsBelow(host.model, top),
             QStringList({host.tree.Path("top/in"), host.tree.Path("top/in/b.png"),
                          host.tree.Path("top/in/deep.png"), host.tree.Path("top/new.png")}));
    QCOMPARE(host.Role("top", Model::NodeModifiedRole),
             QVariant(QFileInfo(host.TopPath()).lastModified().toString(Qt::TextDate)));
    QCOMPARE(host.model.GetFileCount(), 3);
    // The date is the new one: nothing is to be done now.
    const ModelLog log(&host.model);
    Dialog(&host.model, nullptr).Update(top, false);
    QCOMPARE(log.inserted.size() + log.removed.size(), 0);
}

void tst_KXAddToBatchDialog::updateOfAFolderWithAnOlderDate()
{
    Filled host;
    host.tree.File("top/new.png");
    host.Age("top", -100);
    const ModelLog log(&host.model);
    Dialog(&host.model, nullptr).Update(host.Top(), false);
    QCOMPARE(log.inserted.size() + log.removed.size(), 0);
}

void tst_KXAddToBatchDialog::updateWithoutAStoredDate()
{
    Filled host;
    host.tree.File("top/new.png");
    for (const char* text : {"", "no date at all"})
    {
        host.model.setData(host.Top(), text, Model::NodeModifiedRole);
        const bool isOlder = QDateTime::fromString(text, Qt::TextDate) < QDateTime::currentDateTime();
        const ModelLog log(&host.model);
        Dialog(&host.model, nullptr).Update(host.Top(), false);
        QCOMPARE(!log.inserted.isEmpty(), isOlder);
    }
}

void tst_KXAddToBatchDialog::updateOfAnEmptiedFolder()
{
    Filled host;
    host.tree.Remove("top/in/b.png");
    Dialog dialog(&host.model, nullptr);
    SignalLog told(&dialog);
    dialog.Update(host.Row("top/in"), true);
    QCOMPARE(told.Entries(), QStringList({"Finished(1)", "Accepted()"}));
    QCOMPARE(host.model.rowCount(host.Row("top/in")), 0);
}

void tst_KXAddToBatchDialog::updateWithoutFormatsFindsFoldersOnly()
{
    const FolderTree tree;
    tree.Files({"top/a.png", "top/in/b.png"});
    Model model;
    {
        const Formats formats;
        Dialog(&model, nullptr).AddFolders({tree.Path("top")});
    }
    QVERIFY(!NVImageFileManager::GetInstance());
    Dialog(&model, nullptr).Update(model.index(0, 0), true);
    QCOMPARE(PathsBelow(model, model.index(0, 0)), QStringList(tree.Path("top/in")));
}

void tst_KXAddToBatchDialog::updateOfAFileRowThatBecameAFolder()
{
    Filled host;
    host.tree.Remove("top/a.png");
    host.tree.File("top/a.png/inner.png");
    // A file row has no date, which is older than any.
    Dialog(&host.model, nullptr).Update(host.Row("top/a.png"), true);
    QVERIFY(host.Row("top/a.png/inner.png").isValid());
}

void tst_KXAddToBatchDialog::updateWithAnInvalidIndexEmptiesTheModel()
{
    Filled host;
    Dialog(&host.model, nullptr).Update(QModelIndex(), false);
    QCOMPARE(host.model.rowCount(), 0);
}

void tst_KXAddToBatchDialog::cancelledUpdateLeavesTheRow()
{
    Filled host;
    host.tree.Link(".", "top/one");
    host.tree.Link(".", "top/two");
    host.Age("top", 100);
    const QVariant date = host.Role("top", Model::NodeModifiedRole);
    const ModelLog log(&host.model);
    Dialog dialog(&host.model, nullptr);
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "Cancel"); });
    dialog.Update(host.Top(), false);
    QVERIFY(driver.Finished());
    Settle();
    QCOMPARE(log.inserted.size() + log.removed.size(), 0);
    QCOMPARE(host.Role("top", Model::NodeModifiedRole), date);
    QCOMPARE(
        PathsBelow(host.model, host.Top()),
        QStringList({host.tree.Path("top/in"), host.tree.Path("top/in/b.png"), host.tree.Path("top/a.png")}));
    // The date stayed old, so the next one scans again.
    host.tree.Remove("top/one");
    host.tree.Remove("top/two");
    host.Age("top", 100);
    Dialog(&host.model, nullptr).Update(host.Top(), false);
    QVERIFY(!log.removed.isEmpty());
}

// The end of the scan is on its way to the dialog by then.
void tst_KXAddToBatchDialog::cancelAsTheScanEndsChangesNothing()
{
    Filled host;
    const QVariant date = host.Role("top", Model::NodeModifiedRole);
    const ModelLog log(&host.model);
    for (const bool isUpdate : {false, true})
    {
        Dialog dialog(&host.model, nullptr);
        QSignalSpy accepted(&dialog, &Dialog::Accepted);
        connect(ManagerOf(&dialog), &Manager::ScanFinished, &dialog, &Dialog::Reject);
        if (isUpdate)
            dialog.Update(host.Top(), true);
        else
            dialog.AddFolders({host.tree.Path("top")});
        Settle();
        QCOMPARE(dialog.GetResult(), int(KXDialog::ResultRejected));
        QCOMPARE(accepted.size(), 0);
    }
    QCOMPARE(log.inserted.size() + log.removed.size(), 0);
    QCOMPARE(host.Role("top", Model::NodeModifiedRole), date);
}

void tst_KXAddToBatchDialog::updateTakesAPathAsItIs()
{
    const Formats formats;
    const FolderTree tree;
    const QByteArray name = "<b>%1 & \"x\"\n\xd7\x90 [a-z]*?";
    tree.File(name + "/a.png");
    Model model;
    Dialog(&model, nullptr).AddFolders({tree.Path(name)});
    tree.File(name + "/b.png");
    Dialog(&model, nullptr).Update(model.index(0, 0), true);
    QCOMPARE(PathsBelow(model, model.index(0, 0)),
             QStringList({tree.Path(name + "/a.png"), tree.Path(name + "/b.png")}));
    tree.Remove(name + "/a.png");
    tree.Remove(name + "/b.png");
    tree.Remove(name);
    Dialog(&model, nullptr).Update(model.index(0, 0), false);
    QCOMPARE(model.NodeAt(model.index(0, 0))->data.roles.value(Qt::ToolTipRole),
             QVariant(tree.Path(name) + " (not exists)"));
}

void tst_KXAddToBatchDialog::dialogRunsOneScan()
{
    Filled host;
    host.tree.File("other/c.png");
    Dialog dialog(&host.model, nullptr);
    dialog.Update(host.Row("top/in"), true);
    // What is added now ends up under the row of the refresh, in place of what was there.
    QCOMPARE(dialog.AddFolders({host.tree.Path("other")}), 1);
    QCOMPARE(PathsBelow(host.model, host.Row("top/in")),
             QStringList({host.tree.Path("other"), host.tree.Path("other/c.png")}));
}

void tst_KXAddToBatchDialog::addAndRefreshLeaveNothingBehind()
{
    if (!LiveBytesAreExact)
        QSKIP("The sanitizers tell only roughly what is allocated; the plain build has this test.");
    const Formats formats;
    const FolderTree tree;
    for (int i = 0; i < 100; ++i)
        tree.File("f" + QByteArray::number(i / 10) + '/' + QByteArray::number(i) + ".png");
    int images = 0;
    const auto liveAfterRuns = [&]
    {
        for (int i = 0; i < 10; ++i)
        {
            Model model;
            Dialog(&model, nullptr).AddFolders({tree.Path()});
            Dialog(&model, nullptr).Update(model.index(0, 0), true);
            images += model.GetFileCount();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        return LiveBytes();
    };
    // Caches take memory once. Ten trees of a hundred nodes and more have a million bytes.
    std::size_t before = liveAfterRuns();
    std::size_t after = liveAfterRuns();
    int rounds = 2;
    for (; rounds < 6 && after >= before + 50000; ++rounds)
    {
        before = after;
        after = liveAfterRuns();
    }
    QCOMPARE(images, rounds * 10 * 100);
    QVERIFY2(after < before + 50000, qPrintable(QString("%1 -> %2").arg(before).arg(after)));
}

NV_TEST_MAIN(tst_KXAddToBatchDialog)
#include "tst_KXAddToBatchDialog.moc"
