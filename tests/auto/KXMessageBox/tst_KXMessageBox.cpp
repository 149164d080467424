// The dialog that tells something and asks for an answer.

#include "KXMessageBox.h"

#include <QAccessible>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

#include "ModalDriver.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

// The label that holds the text.
QLabel* TextLabelOf(const KXMessageBox& box)
{
    const QList<QLabel*> labels = box.findChildren<QLabel*>();
    for (QLabel* label : labels)
    {
        if (label->textInteractionFlags() & Qt::TextSelectableByMouse)
        {
            return label;
        }
    }
    return nullptr;
}

const QLabel* IconLabelOf(const KXMessageBox& box)
{
    const QList<QLabel*> labels = box.findChildren<QLabel*>();
    return labels.size() == 2 ? labels.at(labels.first() == TextLabelOf(box) ? 1 : 0) : nullptr;
}

QPushButton* ButtonOf(const KXMessageBox& box, KXMessageBox::StandardButton button)
{
    return box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::StandardButton(button));
}

const QString LongText = "Cannot resize the image. Maximum dimension exceeded.\n"
                         "The width should be in the range of 1 - 10000 pixels.\n"
                         "The height should be in the range of 1 - 10000 pixels.";

} // namespace

class tst_KXMessageBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesOfButtonsAndIconsAreFixed();
    void pressedButtonIsTheResult_data();
    void pressedButtonIsTheResult();
    void escapeAndCloseAreNoAnswer();
    void enterPressesTheDefaultButton();
    void defaultButtonHasTheFocus();
    void defaultButtonMayBeReplaced();
    void unknownButtonsAreIgnored();
    void buttonsHaveAccessibleNames();
    void aButtonIsReadOutAsItsText();
    void textIsShownPlain();
    void textCanBeSelectedAndCopied();
    void linesOfTheTextAreNotBroken();
    void longLinesAreWrapped();
    void iconIsShown_data();
    void iconIsShown();
    void screenReadersMeetAnAlert();
};

void tst_KXMessageBox::valuesOfButtonsAndIconsAreFixed()
{
    QCOMPARE(int(KXMessageBox::Ok), 1024);
    QCOMPARE(int(KXMessageBox::Error), 1);
    QCOMPARE(int(KXMessageBox::Cancel), int(QDialogButtonBox::Cancel));
    QCOMPARE(int(KXMessageBox::Reset), int(QDialogButtonBox::Reset));
}

void tst_KXMessageBox::pressedButtonIsTheResult_data()
{
    QTest::addColumn<KXMessageBox::StandardButton>("button");
    QTest::newRow("OK") << KXMessageBox::Ok;
    QTest::newRow("Cancel") << KXMessageBox::Cancel;
    QTest::newRow("Yes") << KXMessageBox::Yes;
    QTest::newRow("No") << KXMessageBox::No;
    QTest::newRow("Discard") << KXMessageBox::Discard;
}

void tst_KXMessageBox::pressedButtonIsTheResult()
{
    QFETCH(KXMessageBox::StandardButton, button);
    KXMessageBox box;
    for (const auto each :
         {KXMessageBox::Ok, KXMessageBox::Cancel, KXMessageBox::Yes, KXMessageBox::No, KXMessageBox::Discard})
    {
        box.AddButton(each);
    }
    SignalLog log(&box);
    ModalDriver driver([&](QWidget* window)
                       { ModalDriver::Press(window, QDialogButtonBox::StandardButton(button)); });

    QCOMPARE(box.Exec(), int(button));

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList(QString("Finished(%1)").arg(int(button))));
}

void tst_KXMessageBox::escapeAndCloseAreNoAnswer()
{
    KXMessageBox box;
    box.AddButton(KXMessageBox::Ok);
    ModalDriver driver({[](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); },
                        [](QWidget* window) { ModalDriver::CloseWindow(window); }});

    QCOMPARE(box.Exec(), int(KXDialog::ResultClosed));
    QCOMPARE(box.Exec(), int(KXDialog::ResultClosed));

    QVERIFY(driver.Finished());
}

void tst_KXMessageBox::enterPressesTheDefaultButton()
{
    KXMessageBox box;
    box.AddButton(KXMessageBox::Yes);
    box.AddButton(KXMessageBox::No);
    box.SetDefaultButton(KXMessageBox::No);
    ModalDriver driver([](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Return); });

    QCOMPARE(box.Exec(), int(KXMessageBox::No));
}

void tst_KXMessageBox::defaultButtonHasTheFocus()
{
    KXMessageBox box;
    box.SetText("Text");
    box.AddButton(KXMessageBox::Yes);
    box.AddButton(KXMessageBox::No);
    box.SetDefaultButton(KXMessageBox::No);

    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));

    QVERIFY(ButtonOf(box, KXMessageBox::No)->hasFocus());
    QVERIFY(ButtonOf(box, KXMessageBox::No)->isDefault());
    QVERIFY(!ButtonOf(box, KXMessageBox::Yes)->isDefault());
}

void tst_KXMessageBox::defaultButtonMayBeReplaced()
{
    KXMessageBox box;
    QCOMPARE(box.GetDefaultButton(), KXMessageBox::NoButton);
    box.AddButton(KXMessageBox::Yes);
    box.AddButton(KXMessageBox::No);

    box.SetDefaultButton(KXMessageBox::No);
    QCOMPARE(box.GetDefaultButton(), KXMessageBox::No);
    box.SetDefaultButton(KXMessageBox::Yes);
    QCOMPARE(box.GetDefaultButton(), KXMessageBox::Yes);
    box.SetDefaultButton(KXMessageBox::Cancel);

    QCOMPARE(box.GetDefaultButton(), KXMessageBox::Yes);
    QVERIFY(!ButtonOf(box, KXMessageBox::No)->isDefault());
}

void tst_KXMessageBox::unknownButtonsAreIgnored()
{
    KXMessageBox box;

    box.AddButton(KXMessageBox::Ok);
    box.AddButton(KXMessageBox::Ok);
    box.AddButton(KXMessageBox::NoButton);
    box.SetDefaultButton(KXMessageBox::Save);

    QCOMPARE(box.findChildren<QPushButton*>().size(), 1);
}

void tst_KXMessageBox::buttonsHaveAccessibleNames()
{
    KXMessageBox box;
    box.AddButton(KXMessageBox::Ok);
    box.AddButton(KXMessageBox::Cancel);

    const QList<QPushButton*> buttons = box.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
    {
        QVERIFY(!button->accessibleName().isEmpty());
        QVERIFY(!button->accessibleName().contains('&'));
    }
}

void tst_KXMessageBox::aButtonIsReadOutAsItsText()
{
    KXMessageBox box;
    box.AddButton(KXMessageBox::Ignore);

    box.SetButtonText(KXMessageBox::Ignore, "&Follow Links");
    box.SetButtonText(KXMessageBox::Yes, "Not there");

    const QPushButton* button = ButtonOf(box, KXMessageBox::Ignore);
    QCOMPARE(button->text(), QString("&Follow Links"));
    QCOMPARE(button->accessibleName(), QString("Follow Links"));
    QVERIFY(!ButtonOf(box, KXMessageBox::Yes));
}

void tst_KXMessageBox::textIsShownPlain()
{
    KXMessageBox box;

    box.SetText("<b>bold</b>");

    QCOMPARE(box.GetText(), QString("<b>bold</b>"));
    QCOMPARE(TextLabelOf(box)->textFormat(), Qt::PlainText);
}

void tst_KXMessageBox::textCanBeSelectedAndCopied()
{
    KXMessageBox box;
    box.SetText("Selectable");
    box.AddButton(KXMessageBox::Ok);
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    QLabel* label = TextLabelOf(box);

    QTest::mouseDClick(label, Qt::LeftButton, Qt::NoModifier, QPoint(8, label->height() / 2));
    QTest::keyClick(label, Qt::Key_C, Qt::ControlModifier);

    QCOMPARE(label->selectedText(), QString("Selectable"));
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("Selectable"));
}

void tst_KXMessageBox::linesOfTheTextAreNotBroken()
{
    KXMessageBox box;
    box.SetText("One short line.");
    box.AddButton(KXMessageBox::Ok);

    box.show();

    const QLabel* label = TextLabelOf(box);
    QVERIFY(label->width() >= label->fontMetrics().horizontalAdvance("One short line."));
    QVERIFY(label->height() < 3 * label->fontMetrics().height() || !box.isVisible());
}

void tst_KXMessageBox::longLinesAreWrapped()
{
    KXMessageBox box;
    box.SetIcon(KXMessageBox::Error);
    box.SetText(LongText + QString(" More to say.").repeated(30));
    box.AddButton(KXMessageBox::Ok);

    box.show();

    const QLabel* label = TextLabelOf(box);
    QVERIFY(box.width() < box.screen()->availableGeometry().width());
    QVERIFY(label->height() >= label->heightForWidth(label->width()));
}

void tst_KXMessageBox::iconIsShown_data()
{
    QTest::addColumn<KXMessageBox::Icon>("icon");
    QTest::newRow("none") << KXMessageBox::NoIcon;
    QTest::newRow("error") << KXMessageBox::Error;
    QTest::newRow("warning") << KXMessageBox::Warning;
    QTest::newRow("information") << KXMessageBox::Information;
    QTest::newRow("question") << KXMessageBox::Question;
}

void tst_KXMessageBox::iconIsShown()
{
    QFETCH(KXMessageBox::Icon, icon);
    KXMessageBox box;
    box.SetText("Text");
    box.AddButton(KXMessageBox::Ok);
    box.SetIcon(KXMessageBox::Warning);

    box.SetIcon(icon);
    box.SetIcon(icon);
    box.show();

    const QLabel* label = IconLabelOf(box);
    QVERIFY(label);
    QCOMPARE(box.GetIcon(), icon);
    QCOMPARE(label->isVisible(), icon != KXMessageBox::NoIcon);
    QCOMPARE(label->pixmap(Qt::ReturnByValue).isNull(), icon == KXMessageBox::NoIcon);
}

void tst_KXMessageBox::screenReadersMeetAnAlert()
{
    KXMessageBox box;
    box.setWindowTitle("Operation error");
    box.SetText("Cannot resize the image.");

    const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&box);

    QVERIFY(face);
    QCOMPARE(face->role(), QAccessible::AlertMessage);
    QCOMPARE(face->text(QAccessible::Name), QString("Operation error"));
    QCOMPARE(face->text(QAccessible::Description), QString("Cannot resize the image."));
}

NV_TEST_MAIN(tst_KXMessageBox)
#include "tst_KXMessageBox.moc"
