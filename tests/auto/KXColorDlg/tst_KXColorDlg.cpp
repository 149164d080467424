// The dialog that asks for a colour.

#include "KXColorDlg.h"

#include <QAccessible>
#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

#include "ModalDriver.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const QColor Start(30, 120, 200, 128);

// The number box of the chooser that the label with this text belongs to.
QSpinBox* boxOf(const QWidget* dialog, const QString& caption)
{
    const QList<QLabel*> labels = dialog->findChildren<QLabel*>();
    for (const QLabel* label : labels)
    {
        if (label->text().remove(QLatin1Char('&')) == caption)
        {
            return qobject_cast<QSpinBox*>(label->buddy());
        }
    }
    return nullptr;
}

// Types a value into one of the chooser's boxes, as a person does.
void typeInto(QSpinBox* box, int value)
{
    QTest::mouseClick(box, Qt::LeftButton);
    box->selectAll();
    QTest::keyClicks(box, QString::number(value));
}

QPushButton* button(const QWidget* dialog, QDialogButtonBox::StandardButton which)
{
    // The chooser has a box of its own, which is never seen.
    const QList<QDialogButtonBox*> boxes = dialog->findChildren<QDialogButtonBox*>();
    for (const QDialogButtonBox* box : boxes)
    {
        if (box->isVisible())
        {
            return box->button(which);
        }
    }
    return nullptr;
}

} // namespace

class tst_KXColorDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWhiteOrWithTheColorGiven();
    void setCurrentColorTellsOnceAndOnlyOfChanges();
    void invalidColorIsIgnored();
    void choiceIsToldWhileItIsOpen();
    void okAcceptsTheChoice();
    void cancelRejects();
    void escapeAndCloseReject_data();
    void escapeAndCloseReject();
    void enterAccepts_data();
    void enterAccepts();
    void selectedColorIsThatOfTheLastAcceptance();
    void selectedColorIsThereWhenTheSignalsGoOut();
    void runsAgainAndAgain();
    void alphaCanBeChosen();
    void fieldForNamesHasTheFocusAtFirst();
    void tabReachesTheButtons();
    void focusGoesBackToTheParent();
    void chooserIsAWholePartOfTheDialog();
    void screenIsPickedFromOnlyWhereItCanBeRead();
    void titleIsThatOfTheHost();
    void deletedWhileOpen();
    void screenReadersMeetADialogOfNamedParts();
};

void tst_KXColorDlg::startsWhiteOrWithTheColorGiven()
{
    const KXColorDlg plain(nullptr, Qt::WindowFlags());
    const KXColorDlg coloured(Start, nullptr, Qt::WindowFlags());
    const KXColorDlg otherModel(QColor::fromHsv(0, 255, 255), nullptr);

    QCOMPARE(plain.CurrentColor(), QColor(Qt::white));
    QCOMPARE(coloured.CurrentColor(), Start);
    QCOMPARE(otherModel.CurrentColor(), QColor(Qt::red));
    QVERIFY(!coloured.SelectedColor().isValid());
    QVERIFY(coloured.GetColorDlg());
}

void tst_KXColorDlg::setCurrentColorTellsOnceAndOnlyOfChanges()
{
    KXColorDlg dialog;
    QSignalSpy spy(dialog.GetColorDlg(), &QColorDialog::currentColorChanged);

    dialog.SetCurrentColor(Start);
    dialog.SetCurrentColor(Start);

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().value<QColor>(), Start);
    QCOMPARE(dialog.CurrentColor(), Start);
}

void tst_KXColorDlg::invalidColorIsIgnored()
{
    KXColorDlg dialog(Start, nullptr);
    QSignalSpy spy(dialog.GetColorDlg(), &QColorDialog::currentColorChanged);

    dialog.SetCurrentColor(QColor());

    QCOMPARE(dialog.CurrentColor(), Start);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(KXColorDlg(QColor(), nullptr).CurrentColor(), QColor(Qt::white));
}

void tst_KXColorDlg::choiceIsToldWhileItIsOpen()
{
    KXColorDlg dialog(Start, nullptr);
    QSignalSpy spy(dialog.GetColorDlg(), &QColorDialog::currentColorChanged);
    ModalDriver driver(
        [&](QWidget* window)
        {
            typeInto(boxOf(window, "Red:"), 77);
            QVERIFY(spy.count() > 0);
            QCOMPARE(spy.last().first().value<QColor>(), QColor(77, 120, 200, 128));
            QCOMPARE(dialog.CurrentColor(), QColor(77, 120, 200, 128));
            ModalDriver::Press(window, "Cancel");
        });

    QCOMPARE(dialog.Exec(), 0);

    QVERIFY(driver.Finished());
}

void tst_KXColorDlg::okAcceptsTheChoice()
{
    KXColorDlg dialog(Start, nullptr);
    SignalLog log(&dialog);
    ModalDriver driver(
        [](QWidget* window)
        {
            typeInto(boxOf(window, "Green:"), 5);
            ModalDriver::Press(window, "OK");
        });

    QCOMPARE(dialog.Exec(), 1);

    QVERIFY(driver.Finished());
    QCOMPARE(dialog.CurrentColor(), QColor(30, 5, 200, 128));
    QCOMPARE(dialog.SelectedColor(), QColor(30, 5, 200, 128));
    QCOMPARE(log.Count("Accepted"), 1);
    QCOMPARE(log.Count("Rejected"), 0);
}

void tst_KXColorDlg::cancelRejects()
{
    KXColorDlg dialog(Start, nullptr);
    SignalLog log(&dialog);
    ModalDriver driver(
        [](QWidget* window)
        {
            typeInto(boxOf(window, "Green:"), 5);
            ModalDriver::Press(window, "Cancel");
        });

    QCOMPARE(dialog.Exec(), int(KXDialog::ResultRejected));

    QVERIFY(driver.Finished());
    QVERIFY(!dialog.SelectedColor().isValid());
    QCOMPARE(log.Count("Accepted"), 0);
    QCOMPARE(log.Count("Rejected"), 1);
}

void tst_KXColorDlg::escapeAndCloseReject_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way :
         {"Escape in the name", "Escape in a box", "Escape in the palette", "Escape on a button", "close"})
        QTest::newRow(way) << QString(way);
}

void tst_KXColorDlg::escapeAndCloseReject()
{
    QFETCH(QString, way);
    KXColorDlg dialog(Start, nullptr);
    SignalLog log(&dialog);
    ModalDriver driver(
        [&](QWidget* window)
        {
            if (way == "close")
            {
                ModalDriver::CloseWindow(window);
                return;
            }
            if (way.endsWith("box"))
                boxOf(window, "Hue:")->setFocus();
            else if (way.endsWith("palette"))
                QTest::mouseClick(window->childAt(60, 120), Qt::LeftButton);
            else if (way.endsWith("button"))
                button(window, QDialogButtonBox::Ok)->setFocus();
            ModalDriver::PressKey(window, Qt::Key_Escape);
        });

    QCOMPARE(dialog.Exec(), int(KXDialog::ResultClosed));

    QVERIFY(driver.Finished());
    QVERIFY(!dialog.SelectedColor().isValid());
    QCOMPARE(log.Entries(), QStringList({"Finished(-1)", "Rejected()"}));
    QVERIFY(dialog.GetColorDlg()->isVisibleTo(&dialog));
}

void tst_KXColorDlg::enterAccepts_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("place");
    QTest::newRow("Return in the name") << Qt::Key_Return << "name";
    QTest::newRow("Enter in a box") << Qt::Key_Enter << "box";
}

void tst_KXColorDlg::enterAccepts()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, place);
    KXColorDlg dialog(Start, nullptr);
    ModalDriver driver(
        [&](QWidget* window)
        {
            if (place == "name")
                QTest::keyClicks(QApplication::focusWidget(), "#ff8000");
            else
                typeInto(boxOf(window, "Blue:"), 0);
            ModalDriver::PressKey(window, key);
        });

    QCOMPARE(dialog.Exec(), 1);

    QVERIFY(driver.Finished());
    QCOMPARE(dialog.SelectedColor(), place == "name" ? QColor(255, 128, 0, 128) : QColor(30, 120, 0, 128));
}

void tst_KXColorDlg::selectedColorIsThatOfTheLastAcceptance()
{
    KXColorDlg dialog(Start, nullptr);
    ModalDriver driver({[](QWidget* window) { ModalDriver::Press(window, "OK"); },
                        [](QWidget* window)
                        {
                            typeInto(boxOf(window, "Red:"), 1);
                            ModalDriver::PressKey(window, Qt::Key_Escape);
                        }});

    QCOMPARE(dialog.Exec(), 1);
    QCOMPARE(dialog.Exec(), -1);

    QVERIFY(driver.Finished());
    QCOMPARE(dialog.SelectedColor(), Start);
    QCOMPARE(dialog.CurrentColor(), QColor(1, 120, 200, 128));
}

void tst_KXColorDlg::selectedColorIsThereWhenTheSignalsGoOut()
{
    KXColorDlg dialog(Start, nullptr);
    QList<QColor> seen;
    connect(&dialog, &KXDialog::Finished, &dialog, [&] { seen.append(dialog.SelectedColor()); });
    connect(&dialog, &KXDialog::Accepted, &dialog, [&] { seen.append(dialog.SelectedColor()); });

    dialog.Accept();

    QCOMPARE(seen, QList<QColor>({Start, Start}));
}

void tst_KXColorDlg::runsAgainAndAgain()
{
    KXColorDlg dialog(Start, nullptr);
    const auto lookAndCancel = [](QWidget* window)
    {
        QVERIFY(boxOf(window, "Red:")->isVisible());
        ModalDriver::Press(window, "Cancel");
    };
    ModalDriver driver({lookAndCancel, lookAndCancel, lookAndCancel});

    for (int run = 0; run < 3; ++run)
    {
        dialog.SetCurrentColor(Start);
        QCOMPARE(dialog.Exec(), 0);
    }

    QVERIFY(driver.Finished());
}

void tst_KXColorDlg::alphaCanBeChosen()
{
    KXColorDlg dialog(Start, nullptr);
    ModalDriver driver(
        [](QWidget* window)
        {
            typeInto(boxOf(window, "Alpha channel:"), 3);
            ModalDriver::Press(window, "OK");
        });

    QCOMPARE(dialog.Exec(), 1);

    QVERIFY(driver.Finished());
    QCOMPARE(dialog.SelectedColor().alpha(), 3);
}

void tst_KXColorDlg::fieldForNamesHasTheFocusAtFirst()
{
    KXColorDlg dialog(Start, nullptr);
    const auto look = [](QWidget* window)
    {
        const auto* field = qobject_cast<QLineEdit*>(window->focusWidget());
        QVERIFY(field);
        QCOMPARE(field->selectedText(), QString("#1e78c8"));
        button(window, QDialogButtonBox::Cancel)->setFocus();
        ModalDriver::Press(window, "Cancel");
    };
    ModalDriver driver({look, look});

    dialog.Exec();
    dialog.Exec();

    QVERIFY(driver.Finished());
}

void tst_KXColorDlg::tabReachesTheButtons()
{
    KXColorDlg dialog;
    ModalDriver driver(
        [](QWidget* window)
        {
            for (int step = 0; step < 4 && window->focusWidget() != button(window, QDialogButtonBox::Cancel);
                 ++step)
                ModalDriver::PressKey(window, Qt::Key_Tab);
            QCOMPARE(window->focusWidget(), button(window, QDialogButtonBox::Cancel));
            ModalDriver::PressKey(window, Qt::Key_Return);
        });

    QCOMPARE(dialog.Exec(), 0);

    QVERIFY(driver.Finished());
}

void tst_KXColorDlg::focusGoesBackToTheParent()
{
    QWidget host;
    auto* field = new QLineEdit(&host);
    host.show();
    host.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&host));
    field->setFocus();
    KXColorDlg dialog(&host);
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "OK"); });

    QCOMPARE(dialog.Exec(), 1);

    QVERIFY(driver.Finished());
    QTRY_VERIFY(field->hasFocus());
}

void tst_KXColorDlg::chooserIsAWholePartOfTheDialog()
{
    KXColorDlg dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const QColorDialog* chooser = dialog.GetColorDlg();
    const QRect place(chooser->mapTo(&dialog, QPoint()), chooser->size());

    QVERIFY(!chooser->isWindow());
    QVERIFY(dialog.rect().contains(place));
    QVERIFY(place.bottom() < button(&dialog, QDialogButtonBox::Ok)->mapTo(&dialog, QPoint()).y());
    QVERIFY(chooser->size().width() >= chooser->minimumSizeHint().width());
    QVERIFY(chooser->testOption(QColorDialog::DontUseNativeDialog));
    dialog.hide();
}

void tst_KXColorDlg::screenIsPickedFromOnlyWhereItCanBeRead()
{
    KXColorDlg dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    int found = 0;
    const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
    for (const QPushButton* each : buttons)
    {
        if (each->text() == "&Pick Screen Color")
        {
            QCOMPARE(each->isVisible(), QGuiApplication::platformName() == "xcb");
            ++found;
        }
    }
    QCOMPARE(found, 1);
    dialog.hide();
}

void tst_KXColorDlg::titleIsThatOfTheHost()
{
    KXColorDlg dialog;
    QCOMPARE(dialog.windowTitle(), QString("Color"));

    dialog.setWindowTitle("Select a custom color");
    dialog.show();

    QCOMPARE(dialog.windowTitle(), QString("Select a custom color"));
    dialog.hide();
}

void tst_KXColorDlg::deletedWhileOpen()
{
    QPointer<KXColorDlg> dialog = new KXColorDlg(Start, nullptr);
    ModalDriver driver([](QWidget* window) { delete window; });

    QCOMPARE(dialog->Exec(), int(KXDialog::ResultClosed));

    QVERIFY(driver.Finished());
    QVERIFY(!dialog);
}

void tst_KXColorDlg::screenReadersMeetADialogOfNamedParts()
{
    KXColorDlg dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QCOMPARE(QAccessible::queryAccessibleInterface(&dialog)->role(), QAccessible::Dialog);
    int named = 0;
    const QList<QWidget*> parts = dialog.findChildren<QWidget*>();
    for (QWidget* part : parts)
    {
        const QByteArray kind = part->metaObject()->className();
        if (kind == "QColorPicker" || kind == "QColorLuminancePicker" || kind == "QColorShowLabel")
        {
            QVERIFY(!QAccessible::queryAccessibleInterface(part)->text(QAccessible::Name).isEmpty());
            ++named;
        }
    }
    QCOMPARE(named, 3);
    dialog.hide();
}

NV_TEST_MAIN(tst_KXColorDlg)
#include "tst_KXColorDlg.moc"
