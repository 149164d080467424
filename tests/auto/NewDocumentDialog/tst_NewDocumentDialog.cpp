// The dialog for a new picture: what it starts with, what it gives back, how it is answered.

#include "NewDocumentDialog.h"

#include <QComboBox>
#include <QLabel>

#include "KXDocumentInterface.h"
#include "ModalDriver.h"
#include "NVApplication.h"
#include "NVSpinBox.h"
#include "TestMain.h"

class tst_NewDocumentDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itStartsWithAUsableSizeOnWhite()
    {
        const NewDocumentDialog dialog;

        QCOMPARE(dialog.GetSize(), QSize(1600, 1200));
        QCOMPARE(dialog.GetFill(), QColor(Qt::white));
    }

    void typedSizesComeBackOnEnter()
    {
        NewDocumentDialog dialog;
        ModalDriver driver(
            [](QWidget* window)
            {
                QTest::keyClick(window->focusWidget(), Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(window->focusWidget(), "2*150");
                ModalDriver::Press(window, "OK");
            });

        QCOMPARE(dialog.Exec(), int(KXDialog::ResultAccepted));

        QVERIFY(driver.Finished());
        QCOMPARE(dialog.GetSize(), QSize(300, 1200));
    }

    void sizesEndWhereDocumentsDo()
    {
        NewDocumentDialog dialog;
        for (NVSpinBox* box : dialog.findChildren<NVSpinBox*>())
        {
            QCOMPARE(box->minimum(), 1);
            QCOMPARE(box->maximum(), KXDocumentInterface::MAX_DOC_DIMENSION);
        }
    }

    void groundsAreColours()
    {
        NVApplication::GetInstance()->SetBackground(Qt::green);
        NewDocumentDialog dialog;
        auto* fill = dialog.findChild<QComboBox*>();

        fill->setCurrentIndex(1);
        QCOMPARE(dialog.GetFill(), QColor(Qt::green));
        fill->setCurrentIndex(2);
        QCOMPARE(dialog.GetFill(), QColor(Qt::transparent));
        fill->setCurrentIndex(-1);
        QCOMPARE(dialog.GetFill(), QColor(Qt::white));
        NVApplication::GetInstance()->SetBackground(Qt::white);
    }

    void escapeRejects()
    {
        NewDocumentDialog dialog;
        ModalDriver driver([](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); });

        QCOMPARE(dialog.Exec(), int(KXDialog::ResultClosed));
        QVERIFY(driver.Finished());
    }

    void everyCaptionHasItsBuddy()
    {
        NewDocumentDialog dialog;
        int buddies = 0;
        for (const QLabel* label : dialog.Content()->findChildren<QLabel*>())
            buddies += label->buddy() ? 1 : 0;
        QCOMPARE(buddies, 3);
    }
};

NV_TEST_MAIN(tst_NewDocumentDialog)
#include "tst_NewDocumentDialog.moc"
