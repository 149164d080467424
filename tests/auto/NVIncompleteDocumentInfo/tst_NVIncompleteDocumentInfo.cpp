// The prompt for a document whose layers would be lost: its form, and what each way out of it gives.

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalMapper>
#include <QTextDocumentFragment>
#include <QTranslator>
#include <QtTest>

#include "BarForm.h"
#include "ModalDriver.h"
#include "NVIncompleteDocumentInfo.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

template <class T>
T* Find(const QWidget* dialog, const char* name)
{
    T* control = dialog->findChild<T*>(name);
    if (!control)
        qFatal("no control %s", name);
    return control;
}

QPushButton* Button(const QWidget* dialog, QDialogButtonBox::StandardButton button)
{
    return Find<QDialogButtonBox>(dialog, "m_pButtonBox")->button(button);
}

} // namespace

class tst_NVIncompleteDocumentInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formIsAsStated();
    void messageIsThis();
    void buttonsSayThis();
    void textsAreTranslated();
    void iconIsLoadedInTheDensityOfTheScreen();
    void mapperBelongsToTheDialog();
    void messageIsNotCutOff();
    void endsWithThisResult_data();
    void endsWithThisResult();
    void noWayOfClosingMeansDontSave();
    void buttonsOfTheBoxTellTheirNumberAlone();
    void resultsHaveTheseSignals_data();
    void resultsHaveTheseSignals();
    void dontAskIsTheBox();
    void dontAskStaysAfterEachWayOut();
    void tabReachesEverything();
    void enterOnTheBoxSaves();
    void deletionEndsTheRun();
};

void tst_NVIncompleteDocumentInfo::formIsAsStated()
{
    const NVIncompleteDocumentInfo dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), QString("Norvane"));
    QCOMPARE(dialog.Content()->objectName(), QString("IncompleteDocumentInfo"));
    const auto* grid = qobject_cast<QGridLayout*>(dialog.Content()->layout());
    QVERIFY(grid);
    auto* icon = Find<QLabel>(&dialog, "m_pIcon");
    auto* message = Find<QLabel>(&dialog, "m_pMainMessage");
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), icon);
    for (const int column : {1, 2, 3})
        QCOMPARE(grid->itemAtPosition(0, column)->widget(), message);
    QCOMPARE(grid->columnCount(), 4);
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), Find<QCheckBox>(&dialog, "m_pDontAsk"));
    auto* box = Find<QDialogButtonBox>(&dialog, "m_pButtonBox");
    QCOMPARE(grid->itemAtPosition(1, 3)->widget(), box);
    QCOMPARE(icon->minimumSize(), QSize(32, 32));
    QCOMPARE(icon->maximumSize(), QSize(32, 32));
    QVERIFY(icon->hasScaledContents());
    QVERIFY(message->wordWrap());
    QVERIFY(!dialog.IsDontAsk());
    QCOMPARE(box->standardButtons(),
             QDialogButtonBox::Save | QDialogButtonBox::SaveAll | QDialogButtonBox::Cancel);
}

// With its closing tag at the start.
void tst_NVIncompleteDocumentInfo::messageIsThis()
{
    const NVIncompleteDocumentInfo dialog(nullptr);
    const QString text = Find<QLabel>(&dialog, "m_pMainMessage")->text();
    QCOMPARE(text,
             QString("<html><head/><body></p>The source document consists of more than one layer.<br>"
                     "The existing file format doesn't support information about layers.<br>"
                     "How do you want to proceed?</p></body></html>"));
    QCOMPARE(QTextDocumentFragment::fromHtml(text).toPlainText().trimmed(),
             QString("The source document consists of more than one layer.\n"
                     "The existing file format doesn't support information about layers.\n"
                     "How do you want to proceed?"));
}

void tst_NVIncompleteDocumentInfo::buttonsSayThis()
{
    const NVIncompleteDocumentInfo dialog(nullptr);
    const QDialogButtonBox standard(QDialogButtonBox::Save);
    QCOMPARE(Button(&dialog, QDialogButtonBox::Save)->text(),
             standard.button(QDialogButtonBox::Save)->text());
    QCOMPARE(Button(&dialog, QDialogButtonBox::SaveAll)->text(), QString("Save as"));
    QCOMPARE(Button(&dialog, QDialogButtonBox::Cancel)->text(), QString("Don't save"));
    QCOMPARE(Find<QCheckBox>(&dialog, "m_pDontAsk")->text(), QString("Don't ask again"));
}

void tst_NVIncompleteDocumentInfo::textsAreTranslated()
{
    struct Marker : QTranslator
    {
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return QString("%1/%2").arg(context, text);
        }
        bool isEmpty() const override { return false; }
    };
    Marker marker;
    QCoreApplication::installTranslator(&marker);
    const NVIncompleteDocumentInfo dialog(nullptr);
    QCoreApplication::removeTranslator(&marker);
    QCOMPARE(dialog.windowTitle(), QString("IncompleteDocumentInfo/Norvane"));
    QVERIFY(
        Find<QLabel>(&dialog, "m_pMainMessage")->text().startsWith("IncompleteDocumentInfo/<html><head/>"));
    QCOMPARE(Find<QCheckBox>(&dialog, "m_pDontAsk")->text(),
             QString("IncompleteDocumentInfo/Don't ask again"));
    QCOMPARE(Button(&dialog, QDialogButtonBox::SaveAll)->text(), QString("NVIncompleteDocumentInfo/Save as"));
    QCOMPARE(Button(&dialog, QDialogButtonBox::Cancel)->text(),
             QString("NVIncompleteDocumentInfo/Don't save"));
}

void tst_NVIncompleteDocumentInfo::iconIsLoadedInTheDensityOfTheScreen()
{
    const bool dense = IsOnDenseScreen();
    const NVIncompleteDocumentInfo dialog(nullptr);
    const QPixmap picture = Find<QLabel>(&dialog, "m_pIcon")->pixmap(Qt::ReturnByValue);
    const QString name = dense ? "theme:criticalicon@2x.png" : "theme:criticalicon.png";
    QCOMPARE(picture.devicePixelRatio(), dense ? 2.0 : 1.0);
    QCOMPARE(picture.size(), dense ? QSize(64, 64) : QSize(32, 32));
    QCOMPARE(picture.toImage(), QPixmap(name).toImage());
}

void tst_NVIncompleteDocumentInfo::mapperBelongsToTheDialog()
{
    const NVIncompleteDocumentInfo dialog(nullptr);
    const QList<QSignalMapper*> mappers = dialog.findChildren<QSignalMapper*>();
    QCOMPARE(mappers.size(), 1);
    QCOMPARE(mappers.first()->parent(), &dialog);
    QCOMPARE(mappers.first()->mapping(1), Button(&dialog, QDialogButtonBox::Save));
    QCOMPARE(mappers.first()->mapping(2), Button(&dialog, QDialogButtonBox::SaveAll));
    QCOMPARE(mappers.first()->mapping(0), Button(&dialog, QDialogButtonBox::Cancel));
}

void tst_NVIncompleteDocumentInfo::messageIsNotCutOff()
{
    for (const int points : {7, 9, 12, 20})
    {
        QFont font = QApplication::font();
        font.setPointSize(points);
        NVIncompleteDocumentInfo dialog(nullptr);
        dialog.setFont(font);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        const auto* message = Find<QLabel>(&dialog, "m_pMainMessage");
        QVERIFY(message->height() >= message->heightForWidth(message->width()));
        for (const QPushButton* button : dialog.findChildren<QPushButton*>())
            QVERIFY(button->width() >= button->sizeHint().width());
    }
}

void tst_NVIncompleteDocumentInfo::endsWithThisResult_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("result");
    QTest::newRow("save") << "Save" << 1;
    QTest::newRow("save as") << "Save as" << 2;
    QTest::newRow("don't save") << "Don't save" << 0;
    QTest::newRow("escape") << "escape" << -1;
    QTest::newRow("close") << "close" << -1;
    QTest::newRow("hide") << "hide" << -1;
    QTest::newRow("enter") << "enter" << 1;
}

void tst_NVIncompleteDocumentInfo::endsWithThisResult()
{
    QFETCH(QString, way);
    QFETCH(int, result);
    NVIncompleteDocumentInfo dialog(nullptr);
    const ModalDriver driver(
        [way](QWidget* window)
        {
            if (way == "escape")
                ModalDriver::PressKey(window, Qt::Key_Escape);
            else if (way == "close")
                ModalDriver::CloseWindow(window);
            else if (way == "hide")
                window->hide();
            else if (way == "enter")
                ModalDriver::PressKey(window, Qt::Key_Return);
            else
                ModalDriver::Press(window, way);
        });
    QCOMPARE(dialog.Exec(), result);
    QCOMPARE(dialog.GetResult(), result);
    QVERIFY(driver.Finished());
}

void tst_NVIncompleteDocumentInfo::noWayOfClosingMeansDontSave()
{
    QVERIFY(int(KXDialog::ResultClosed) < 0);
    // Each control may have the keys when Escape comes, the button "Don't save" too.
    const NVIncompleteDocumentInfo sample(nullptr);
    const int controls = sample.findChildren<QAbstractButton*>().size();
    QCOMPARE(controls, 4);
    for (int i = 0; i < controls; ++i)
    {
        NVIncompleteDocumentInfo dialog(nullptr);
        const ModalDriver driver(
            [i](QWidget* window)
            {
                window->findChildren<QAbstractButton*>().at(i)->setFocus();
                ModalDriver::PressKey(window, Qt::Key_Escape);
            });
        QCOMPARE(dialog.Exec(), int(KXDialog::ResultClosed));
        QVERIFY(driver.Finished());
    }
}

// The signals of the button box itself lead nowhere: their roles would make 1 of both saving buttons.
void tst_NVIncompleteDocumentInfo::buttonsOfTheBoxTellTheirNumberAlone()
{
    NVIncompleteDocumentInfo dialog(nullptr);
    const SignalLog log(&dialog);
    auto* box = Find<QDialogButtonBox>(&dialog, "m_pButtonBox");
    Q_EMIT box->accepted();
    Q_EMIT box->rejected();
    QCOMPARE(log.Count("Finished"), 0);
    Button(&dialog, QDialogButtonBox::SaveAll)->click();
    QCOMPARE(log.Count("Finished"), 1);
    QCOMPARE(dialog.GetResult(), 2);
}

void tst_NVIncompleteDocumentInfo::resultsHaveTheseSignals_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("save") << int(QDialogButtonBox::Save) << QStringList({"Finished(1)", "Accepted()"});
    QTest::newRow("save as") << int(QDialogButtonBox::SaveAll) << QStringList({"Finished(2)"});
    QTest::newRow("don't save") << int(QDialogButtonBox::Cancel)
                                << QStringList({"Finished(0)", "Rejected()"});
}

void tst_NVIncompleteDocumentInfo::resultsHaveTheseSignals()
{
    QFETCH(int, button);
    QFETCH(QStringList, entries);
    NVIncompleteDocumentInfo dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const SignalLog log(&dialog);
    QTest::mouseClick(Button(&dialog, static_cast<QDialogButtonBox::StandardButton>(button)), Qt::LeftButton);
    QCOMPARE(log.Entries(), entries);
    QVERIFY(!dialog.isVisible());
}

void tst_NVIncompleteDocumentInfo::dontAskIsTheBox()
{
    NVIncompleteDocumentInfo dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* box = Find<QCheckBox>(&dialog, "m_pDontAsk");
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    QVERIFY(dialog.IsDontAsk());
    QTest::keyClick(box, Qt::Key_Space);
    QVERIFY(!dialog.IsDontAsk());
}

void tst_NVIncompleteDocumentInfo::dontAskStaysAfterEachWayOut()
{
    for (const QString& way : {QString("Save"), QString("Save as"), QString("Don't save")})
    {
        NVIncompleteDocumentInfo dialog(nullptr);
        const ModalDriver driver(
            [way](QWidget* window)
            {
                window->findChild<QCheckBox*>("m_pDontAsk")->click();
                ModalDriver::Press(window, way);
            });
        QVERIFY(dialog.Exec() >= 0);
        QVERIFY(dialog.IsDontAsk());
        QVERIFY(driver.Finished());
    }
}

void tst_NVIncompleteDocumentInfo::tabReachesEverything()
{
    NVIncompleteDocumentInfo dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QSet<QString> reached;
    for (int i = 0; i < 4; ++i)
    {
        reached.insert(qobject_cast<QAbstractButton*>(QApplication::focusWidget())->text().remove('&'));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, QSet<QString>({"Don't ask again", "Save", "Save as", "Don't save"}));
}

void tst_NVIncompleteDocumentInfo::enterOnTheBoxSaves()
{
    NVIncompleteDocumentInfo dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QVERIFY(Find<QCheckBox>(&dialog, "m_pDontAsk")->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(dialog.GetResult(), 1);
}

void tst_NVIncompleteDocumentInfo::deletionEndsTheRun()
{
    QPointer<NVIncompleteDocumentInfo> dialog(new NVIncompleteDocumentInfo(nullptr));
    const ModalDriver driver([](QWidget* window) { window->deleteLater(); });
    QCOMPARE(dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(!dialog);
    QVERIFY(driver.Finished());
}

NV_TEST_MAIN(tst_NVIncompleteDocumentInfo)
#include "tst_NVIncompleteDocumentInfo.moc"
