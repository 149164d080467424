// Every exported widget class deleted at bad moments: shown, with focus, with popups open, with live keys,
// pressed; and in silence, since a slot that a dying widget calls finds it half gone.

#include "KexaAppKeyHook.h"
#include "NVBrushToolbarWidget.h"
#include "NVFillCanToolbar.h"
#include "SignalLog.h"
#include "Specimens.h"
#include "TestMain.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>

#include <algorithm>

class tst_Death : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void deletedUnshown_data();
    void deletedUnshown();
    void deletedWhileShown_data();
    void deletedWhileShown();
    void deletedWithFocus_data();
    void deletedWithFocus();
    void deletedWithPopupsOpen_data();
    void deletedWithPopupsOpen();
    void deletedWithTheMousePressed_data();
    void deletedWithTheMousePressed();
    void deletedWithItsParent_data();
    void deletedWithItsParent();
    void deletedFromItsOwnSignal_data();
    void deletedFromItsOwnSignal();
    void deletedWithLiveKeys_data();
    void deletedWithLiveKeys();

private:
    // Deletes the widget, deals with what it left in the event queue, and tells what it said meanwhile.
    static QStringList lastWords(Specimen& specimen);
};

QStringList tst_Death::lastWords(Specimen& specimen)
{
    SignalLog log(specimen.Widget, SignalLog::WithDestroyed);
    delete specimen.Widget;
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    return log.Entries();
}

void tst_Death::deletedUnshown_data()
{
    AddSpeciesRows();
}

void tst_Death::deletedUnshown()
{
    QFETCH(QByteArray, species);
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    QCOMPARE(lastWords(*specimen), QStringList({"destroyed()"}));
}

void tst_Death::deletedWhileShown_data()
{
    AddSpeciesRows();
}

void tst_Death::deletedWhileShown()
{
    QFETCH(QByteArray, species);
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    QVERIFY(specimen->Show());
    QCOMPARE(lastWords(*specimen), QStringList({"destroyed()"}));
}

void tst_Death::deletedWithFocus_data()
{
    AddSpeciesRows();
}

// Each child that takes focus has it once. Text is typed before, so that an editor has something to tell when
// it loses the focus.
void tst_Death::deletedWithFocus()
{
    QFETCH(QByteArray, species);
    for (int turn = 0;; ++turn)
    {
        const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
        QVERIFY(specimen->Show());
        specimen->Widget->activateWindow();
        QVERIFY(QTest::qWaitFor([&] { return QApplication::activeWindow() == specimen->Widget->window(); }));
        QList<QWidget*> takers = {specimen->Widget};
        const QList<QWidget*> children = specimen->Widget->findChildren<QWidget*>();
        std::copy_if(children.cbegin(), children.cend(), std::back_inserter(takers),
                     [](const QWidget* child)
                     {
                         return child->isVisible() && child->isEnabled() &&
                             child->focusPolicy() != Qt::NoFocus && !child->focusProxy();
                     });
        if (turn == takers.size())
        {
            break;
        }
        takers.at(turn)->setFocus(Qt::TabFocusReason);
        if (qobject_cast<QLineEdit*>(takers.at(turn)))
        {
            QTest::keyClick(takers.at(turn), Qt::Key_7);
        }
        const QString said = lastWords(*specimen).join(", ");
        QVERIFY2(said == "destroyed()", qPrintable(QString("turn %1: %2").arg(turn).arg(said)));
    }
}

void tst_Death::deletedWithPopupsOpen_data()
{
    AddSpeciesRows();
}

void tst_Death::deletedWithPopupsOpen()
{
    QFETCH(QByteArray, species);
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    QVERIFY(specimen->Show());
    specimen->OpenPopups();
    QCoreApplication::processEvents();
    QVERIFY(specimen->Widget);
    QCOMPARE(lastWords(*specimen), QStringList({"destroyed()"}));
    QVERIFY(!QApplication::activePopupWidget());
}

void tst_Death::deletedWithTheMousePressed_data()
{
    AddSpeciesRows();
}

void tst_Death::deletedWithTheMousePressed()
{
    QFETCH(QByteArray, species);
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    QVERIFY(specimen->Show());
    const QPoint middle = specimen->Widget->rect().center();
    QWidget* pressed = specimen->Widget->childAt(middle);
    pressed = pressed ? pressed : specimen->Widget.data();
    QTest::mousePress(pressed, Qt::LeftButton, Qt::NoModifier, pressed->mapFrom(specimen->Widget, middle));
    QCOMPARE(lastWords(*specimen), QStringList({"destroyed()"}));
}

void tst_Death::deletedWithItsParent_data()
{
    AddSpeciesRows();
}

void tst_Death::deletedWithItsParent()
{
    QFETCH(QByteArray, species);
    auto* parent = new QWidget;
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    specimen->Widget->setParent(parent, specimen->Widget->windowFlags());
    parent->show();
    QVERIFY(specimen->Show());
    SignalLog log(specimen->Widget, SignalLog::WithDestroyed);
    delete parent;
    QVERIFY(!specimen->Widget);
    QCOMPARE(log.Entries(), QStringList({"destroyed()"}));
}

void tst_Death::deletedFromItsOwnSignal_data()
{
    AddSpeciesRows();
}

// The host drops the widget while one of its buttons is held down, as a button that closes everything makes
// it do.
void tst_Death::deletedFromItsOwnSignal()
{
    QFETCH(QByteArray, species);
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    QVERIFY(specimen->Show());
    const QList<QAbstractButton*> buttons = specimen->Widget->findChildren<QAbstractButton*>();
    const auto button =
        std::find_if(buttons.cbegin(), buttons.cend(),
                     [](const QAbstractButton* each) { return each->isVisible() && each->isEnabled(); });
    if (button == buttons.cend())
    {
        QSKIP("this class has no button");
    }
    connect(*button, &QAbstractButton::pressed, specimen->Widget, &QObject::deleteLater);
    QTest::mousePress(*button, Qt::LeftButton);
    QTRY_VERIFY(!specimen->Widget);
}

void tst_Death::deletedWithLiveKeys_data()
{
    AddSpeciesRows();
}

// Afterwards the keys belong to the window in front again.
void tst_Death::deletedWithLiveKeys()
{
    QFETCH(QByteArray, species);
    const std::unique_ptr<Specimen> specimen = SpeciesOf(species).Create();
    auto* brushBar = qobject_cast<NVBrushToolbarWidget*>(specimen->Widget);
    auto* fillCan = qobject_cast<NVFillCanToolbar*>(specimen->Widget);
    if (!brushBar && !fillCan)
    {
        QSKIP("this class has no keys");
    }
    QVERIFY(specimen->Show());
    brushBar ? brushBar->CreateShortcuts() : fillCan->CreateShortcuts();
    QCOMPARE(lastWords(*specimen), QStringList({"destroyed()"}));

    QLineEdit other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    SignalLog log(KexaAppKeyHook::instance());
    QTest::keyClick(&other, Qt::Key_5);
    QTest::keyClick(&other, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
    QCOMPARE(other.text().left(1), QString("5"));
    QCOMPARE(log.Entries(), QStringList());
}

NV_TEST_MAIN(tst_Death)

#include "tst_Death.moc"
