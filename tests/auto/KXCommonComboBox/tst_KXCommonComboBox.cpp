// The combo box of bars and dialogs.

#include "KXCommonComboBox.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QWindow>

#include "KXDialog.h"
#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

// A turn of the wheel over the widget. Returns whether the widget took it, or else its parent would get it.
bool Turn(QWidget* widget)
{
    const QPoint place = widget->rect().center();
    QWheelEvent event(place, widget->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
    return event.isAccepted();
}

// A box with three entries in a window that has the focus at first.
struct Host
{
    explicit Host(Qt::FocusPolicy policy = Qt::StrongFocus)
    {
        box = new KXCommonComboBox(&window);
        box->addItems({"Normal", "Multiply", "Screen"});
        box->setGeometry(10, 10, 120, 24);
        box->setFocusPolicy(policy);
        window.setFocusPolicy(Qt::StrongFocus);
        window.resize(300, 200);
    }

    bool Show()
    {
        window.show();
        window.setFocus();
        return QTest::qWaitForWindowActive(&window);
    }

    QWidget window;
    KXCommonComboBox* box;
};

} // namespace

class tst_KXCommonComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wheelOverTheBoxChangesNothing();
    void wheelOverABoxWithoutFocusPolicyChangesNothing();
    void wheelOverTheFocusedBoxSteps();
    void wheelOverAFocusedEditableBoxSteps();
    void boxIsAnOrdinaryComboBoxOtherwise();
    void indexOutOfRangeClearsTheBox();
    void tooLongEntryEndsInDots_data();
    void tooLongEntryEndsInDots();
    void entryThatFitsIsDrawnInFull_data();
    void entryThatFitsIsDrawnInFull();
    void editableBoxIsDrawnAsUsual();
    void keyInTheOpenListEndsTheListAlone_data();
    void keyInTheOpenListEndsTheListAlone();
    void boxMayDieWithItsListOpen();
    void boxMayDieWhenAnEntryIsChosen();
};

void tst_KXCommonComboBox::wheelOverTheBoxChangesNothing()
{
    Host host;
    QVERIFY(host.Show());

    QVERIFY(!Turn(host.box));

    QCOMPARE(host.box->currentIndex(), 0);
}

void tst_KXCommonComboBox::wheelOverABoxWithoutFocusPolicyChangesNothing()
{
    Host host(Qt::NoFocus);
    QVERIFY(host.Show());
    QTest::mouseClick(host.box, Qt::LeftButton);
    QTRY_VERIFY(host.box->view()->isVisible());
    QTest::keyClick(host.box->view(), Qt::Key_Escape);
    QTRY_VERIFY(!host.box->view()->isVisible());

    QVERIFY(!Turn(host.box));

    QCOMPARE(host.box->currentIndex(), 0);
}

void tst_KXCommonComboBox::wheelOverTheFocusedBoxSteps()
{
    Host host;
    QVERIFY(host.Show());
    QSignalSpy spy(host.box, qOverload<int>(&QComboBox::currentIndexChanged));
    host.box->setFocus();

    QVERIFY(Turn(host.box));

    QCOMPARE(host.box->currentIndex(), 1);
    QCOMPARE(spy.count(), 1);
}

void tst_KXCommonComboBox::wheelOverAFocusedEditableBoxSteps()
{
    Host host;
    host.box->setEditable(true);
    QVERIFY(host.Show());
    QVERIFY(!Turn(host.box));
    QCOMPARE(host.box->currentIndex(), 0);
    QTest::mouseClick(host.box->lineEdit(), Qt::LeftButton);

    QVERIFY(Turn(host.box));

    QCOMPARE(host.box->currentIndex(), 1);
}

void tst_KXCommonComboBox::boxIsAnOrdinaryComboBoxOtherwise()
{
    Host host;
    QVERIFY(host.Show());
    QSignalSpy spy(host.box, qOverload<int>(&QComboBox::currentIndexChanged));

    host.box->setCurrentIndex(2);
    host.box->setCurrentIndex(2);
    QCOMPARE(spy.count(), 1);
    host.box->setFocus();
    QTest::keyClick(host.box, Qt::Key_Up);
    QTest::keyClick(host.box, Qt::Key_N);

    QCOMPARE(spy, QList<QList<QVariant>>({{2}, {1}, {0}}));
}

void tst_KXCommonComboBox::indexOutOfRangeClearsTheBox()
{
    Host host;
    QVERIFY(host.Show());

    host.box->setCurrentIndex(99);

    QCOMPARE(host.box->currentIndex(), -1);
    const ProbeImage probe(host.box);
    QVERIFY(probe.Size() == host.box->size());
}

void tst_KXCommonComboBox::tooLongEntryEndsInDots_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void tst_KXCommonComboBox::tooLongEntryEndsInDots()
{
    QFETCH(Qt::LayoutDirection, direction);
    Host host;
    host.box->setLayoutDirection(direction);
    host.box->addItem("Pattern and gradient together with a long name");
    host.box->setCurrentIndex(3);
    KXCommonComboBox other;
    other.setLayoutDirection(direction);
    other.addItem("Pattern and gradient together with another name");
    other.resize(host.box->size());

    const ProbeImage one(host.box);

    // What differs lies behind the dots.
    QVERIFY(!one.Differs(ProbeImage(&other)));
    QComboBox plain;
    plain.setLayoutDirection(direction);
    plain.addItem(host.box->currentText());
    plain.resize(host.box->size());
    QVERIFY(one.Differs(ProbeImage(&plain)));
}

void tst_KXCommonComboBox::entryThatFitsIsDrawnInFull_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("pixels");
    for (int pixels = 10; pixels <= 24; ++pixels)
    {
        for (const char* text : {"Highlights", "Lighten colors"})
            QTest::addRow("%s, %d pixels", text, pixels) << text << pixels;
    }
}

void tst_KXCommonComboBox::entryThatFitsIsDrawnInFull()
{
    QFETCH(QString, text);
    QFETCH(int, pixels);
    KXCommonComboBox box;
    QComboBox plain;
    QFont font = box.font();
    font.setPixelSize(pixels);
    for (QComboBox* each : {static_cast<QComboBox*>(&box), &plain})
    {
        each->setFont(font);
        each->addItem(text);
    }
    plain.resize(plain.sizeHint());
    box.resize(plain.size());

    const ProbeImage probe(&box);

    QVERIFY2(!probe.Differs(ProbeImage(&plain)), qPrintable(probe.FailureText()));
}

void tst_KXCommonComboBox::editableBoxIsDrawnAsUsual()
{
    KXCommonComboBox box;
    QComboBox plain;
    for (QComboBox* each : {static_cast<QComboBox*>(&box), &plain})
    {
        each->setEditable(true);
        each->addItem("72");
        each->resize(80, 24);
    }

    const ProbeImage probe(&box);

    QVERIFY2(!probe.Differs(ProbeImage(&plain)), qPrintable(probe.FailureText()));
}

void tst_KXCommonComboBox::keyInTheOpenListEndsTheListAlone_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("chosen");

    QTest::newRow("Return chooses") << Qt::Key_Return << "Multiply";
    QTest::newRow("Enter chooses") << Qt::Key_Enter << "Multiply";
    QTest::newRow("Escape leaves it") << Qt::Key_Escape << "Normal";
}

void tst_KXCommonComboBox::keyInTheOpenListEndsTheListAlone()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, chosen);
    KXDialog dialog;
    auto* box = new KXCommonComboBox(dialog.Content());
    box->addItems({"Normal", "Multiply", "Screen"});
    auto* button = new QPushButton("OK", dialog.Content());
    button->move(0, 60);
    button->setDefault(true);
    dialog.resize(200, 120);
    QSignalSpy finished(&dialog, &KXDialog::Finished);
    QSignalSpy pressed(button, &QPushButton::clicked);
    QSignalSpy activated(box, qOverload<int>(&QComboBox::activated));
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    box->setFocus();

    // twice, since the second opening finds the list as the first one left it
    for (int times = 1; times <= 2; ++times)
    {
        box->setCurrentIndex(0);
        box->showPopup();
        QTRY_VERIFY(box->view()->isVisible());
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Down);
        QTest::keyClick(dialog.windowHandle(), key);

        QTRY_VERIFY(!box->view()->isVisible());
        QCOMPARE(box->currentText(), chosen);
        QCOMPARE(activated.size(), key == Qt::Key_Escape ? 0 : times);
        QCOMPARE(pressed.size(), 0);
        QCOMPARE(finished.size(), 0);
    }
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    QCOMPARE(pressed.size(), 1);
}

void tst_KXCommonComboBox::boxMayDieWhenAnEntryIsChosen()
{
    Host host;
    QVERIFY(host.Show());
    QPointer<KXCommonComboBox> box = host.box;
    connect(box, qOverload<int>(&QComboBox::activated), box, &QObject::deleteLater);
    box->showPopup();
    QTRY_VERIFY(box->view()->isVisible());

    QTest::keyClick(box->view(), Qt::Key_Return);

    QTRY_VERIFY(!box);
}

void tst_KXCommonComboBox::boxMayDieWithItsListOpen()
{
    Host host;
    QVERIFY(host.Show());
    QPointer<KXCommonComboBox> box = host.box;
    box->showPopup();
    QTRY_VERIFY(box->view()->isVisible());

    delete box;

    QVERIFY(!QApplication::activePopupWidget());
}

NV_TEST_MAIN(tst_KXCommonComboBox)
#include "tst_KXCommonComboBox.moc"
