// What a failed step leaves to the next one: nothing but its failure.

#include "TourGuide.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QMenu>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>

#include "BrushTool.h"
#include "KXDialog.h"
#include "NVBrushToolbar.h"
#include "NVGradientPopup.h"
#include "TestMain.h"

Q_DECLARE_METATYPE(TourGuide::Act)

namespace
{

// Without content it would have no size, and no place among the modal windows.
class Box : public KXDialog
{
public:
    explicit Box(QWidget* parent = nullptr) : KXDialog(parent) { resize(200, 120); }
};

// A guide whose window is shown.
class Tour
{
public:
    Tour() : m_guide(m_folder.filePath(QStringLiteral("tour")), QString())
    {
        m_guide.GetRobot().SetPatience(100);
        m_guide.GetWindow()->resize(1000, 700);
        m_guide.GetWindow()->show();
        m_guide.GetWindow()->activateWindow();
    }

    TourGuide* operator->() { return &m_guide; }

    // Plays it as a step.
    void Play(const TourGuide::Act& act) { m_guide.Step("step", "A step", act); }
    void OpenPicture(const char* name)
    {
        QImage image(200, 100, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        QVERIFY(m_guide.OpenDrawn(image, QLatin1String(name)));
    }
    // Ends the tour. The reasons, step by step, as the page has them.
    QStringList Failures()
    {
        const bool isWell = m_guide.End();
        QFile page(m_folder.filePath(QStringLiteral("tour/index.html")));
        if (!page.open(QIODevice::ReadOnly))
            return {QStringLiteral("no page")};
        const QStringList lines = QString::fromUtf8(page.readAll()).split(QLatin1Char('\n'));
        QStringList failures;
        for (const QString& line : lines)
        {
            const int at = line.indexOf(QLatin1String("Failed: "));
            if (at >= 0)
                failures += line.mid(at + 8).remove(QLatin1String("</p>"));
        }
        return isWell == failures.isEmpty() ? failures : QStringList(QStringLiteral("another verdict"));
    }

private:
    QTemporaryDir m_folder;
    TourGuide m_guide;
};

} // namespace

class tst_TourGuide : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStepThatGoesWellFailsNothing()
    {
        Tour tour;
        int steps = 0;

        tour.Play([&steps](TourGuide&) { ++steps; });

        QCOMPARE(steps, 1);
        QCOMPARE(tour.Failures(), QStringList());
    }

    void aStepThatEndsBeforeItsTimeFailsAloneAndTheNextOneIsPlayed()
    {
        Tour tour;
        int steps = 0;

        tour.Play([](TourGuide&) { throw StepEnded(QStringLiteral("nothing there")); });
        tour.Play([&steps](TourGuide&) { ++steps; });

        QCOMPARE(steps, 1);
        QCOMPARE(tour.Failures(), QStringList{QStringLiteral("nothing there")});
    }

    void aModalFunctionThatWasNotCalledFailsItsStep()
    {
        Tour tour;
        int calls = 0;

        tour.Play([&calls](TourGuide& it) { it.GetRobot().WhenModal([&calls](QWidget*) { ++calls; }); });

        QVERIFY(!tour->GetRobot().IsWaitingForModal());
        QCOMPARE(calls, 0);
        QCOMPARE(tour.Failures(), QStringList{QStringLiteral("the dialog did not come")});
    }

    void aDialogThatComesTooLateIsNotForTheFunctionOfTheStepBefore()
    {
        Tour tour;
        Box dialog;
        int calls = 0;

        tour.Play(
            [&](TourGuide& it)
            {
                it.GetRobot().WhenModal([&calls](QWidget*) { ++calls; });
                QTimer::singleShot(0, &dialog, [&dialog] { dialog.Exec(); });
            });

        QVERIFY(!dialog.isVisible());
        QCOMPARE(calls, 0);
        QCOMPARE(tour.Failures(),
                 (QStringList{QStringLiteral("the dialog did not come"),
                              QStringLiteral("the window &quot;&quot; stayed open")}));
    }

    void aFailureInADialogClosesItAndTheStepGoesOn()
    {
        Tour tour;
        Box dialog;
        bool goesOn = false;

        tour.Play(
            [&](TourGuide& it)
            {
                it.GetRobot().WhenModal([](QWidget* modal) { Control<QSpinBox>(modal, "m_pNone"); });
                dialog.Exec();
                goesOn = true;
            });

        QVERIFY(goesOn);
        QCOMPARE(tour.Failures(), QStringList{QStringLiteral("there is no control m_pNone")});
    }

    void whatAFailedStepLeavesOpenIsClosed()
    {
        Tour tour;
        tour.OpenPicture("one.png");
        bool wasOpen = false;

        tour.Play(
            [&wasOpen](TourGuide& it)
            {
                it.OpenMenu(Qt::Key_F);
                wasOpen = QApplication::activePopupWidget();
                it.Check(false, "a failure");
            });

        QVERIFY(wasOpen);
        QVERIFY(!QApplication::activePopupWidget());
        QCOMPARE(tour.Failures(), QStringList{QStringLiteral("a failure")});
    }

    void whatComesAfterAFailedStepIsClosedBeforeTheNextOne()
    {
        Tour tour;
        QMenu menu;
        menu.addAction(QStringLiteral("Entry"));
        bool isOpen = true;

        tour.Play([](TourGuide& it) { it.Check(false, "a failure"); });
        menu.popup(QPoint(20, 20));
        tour.Play([&isOpen, &menu](TourGuide&) { isOpen = menu.isVisible(); });

        QVERIFY(!isOpen);
        QCOMPARE(tour.Failures(), QStringList{QStringLiteral("a failure")});
    }

    void withoutADocumentAStepEnds_data()
    {
        QTest::addColumn<TourGuide::Act>("act");
        const auto add = [](const char* name, const TourGuide::Act& act) { QTest::newRow(name) << act; };
        add("pixels", [](TourGuide& it) { it.GetPixels(); });
        add("view", [](TourGuide& it) { it.GetView(); });
        add("composition", [](TourGuide& it) { it.GetComposition(); });
        add("focus", [](TourGuide& it) { it.FocusCanvas(); });
        add("point", [](TourGuide& it) { it.PointAt(0.5, 0.5); });
        add("pixel", [](TourGuide& it) { it.PixelAt(QPointF(1, 1)); });
        add("selected", [](TourGuide& it) { it.SelectedAt(QPointF(1, 1)); });
        add("click", [](TourGuide& it) { it.ClickAt(QPointF(1, 1)); });
        add("stroke", [](TourGuide& it) { it.Stroke(QPointF(1, 1), QPointF(9, 9)); });
        add("undo steps", [](TourGuide& it) { it.UndoSteps(); });
        add("close", [](TourGuide& it) { it.CloseDiscarding(); });
    }

    void withoutADocumentAStepEnds()
    {
        QFETCH(TourGuide::Act, act);
        Tour tour;
        QVERIFY(!tour->GetDocument());

        tour.Play(act);

        QCOMPARE(tour.Failures(), QStringList{QStringLiteral("no document is open")});
    }

    void whatIsNotThereEndsTheStep_data()
    {
        QTest::addColumn<TourGuide::Act>("act");
        QTest::addColumn<QString>("reason");
        const auto add = [](const char* name, const TourGuide::Act& act, const char* reason)
        { QTest::newRow(name) << act << QString::fromLatin1(reason); };
        add(
            "control", [](TourGuide& it) { Control<QSpinBox>(it.GetWindow(), "m_pNone"); },
            "there is no control m_pNone");
        add(
            "control of no bar", [](TourGuide&) { Control<QSpinBox>(nullptr, "m_pSizeSpn"); },
            "there is no control m_pSizeSpn");
        add(
            "control by its kind", [](TourGuide&) { Control<QSpinBox>(nullptr); }, "there is no QSpinBox");
        add(
            "part", [](TourGuide& it) { it.Get<NVGradientPopup>(); }, "there is no NVGradientPopup");
        add(
            "menu", [](TourGuide& it) { it.OpenMenu(Qt::Key_Q); }, "the menu did not open");
    }

    void whatIsNotThereEndsTheStep()
    {
        QFETCH(TourGuide::Act, act);
        QFETCH(QString, reason);
        Tour tour;
        bool goesOn = false;

        tour.Play(
            [&](TourGuide& it)
            {
                act(it);
                goesOn = true;
            });

        QVERIFY(!goesOn);
        QCOMPARE(tour.Failures(), QStringList{reason});
    }

    void whatIsThereIsFound()
    {
        Tour tour;

        tour.Play(
            [](TourGuide& it)
            {
                const NVBrushToolbar* bar = it.GetWindow()->GetBrushTool()->GetBrushBar();
                it.Check(it.Get<NVBrushToolbar>() == bar, "another bar");
                it.Check(Control<QSpinBox>(bar, "m_pSizeSpn")->value() == bar->GetSize(), "another box");
                it.Check(Control<QComboBox>(bar), "no list");
            });

        QCOMPARE(tour.Failures(), QStringList());
    }

    void whatIsNullFailsTheStepAndItGoesOn()
    {
        Tour tour;
        bool goesOn = false;

        tour.Play(
            [&goesOn](TourGuide& it)
            {
                it.TypeInto(nullptr, 5);
                it.TypeOver(nullptr, "5");
                it.ChooseEntry(nullptr, 1);
                it.SetChecked(nullptr, true);
                it.VisitPopup(nullptr, nullptr);
                it.TakePictureOf(nullptr, QStringLiteral("nothing"));
                goesOn = true;
            });

        QVERIFY(goesOn);
        QCOMPARE(tour.Failures().size(), 6);
    }

    void aListThatDoesNotOpenGetsNoKeys()
    {
        Tour tour;
        bool isRejected = false;

        tour.Play(
            [&isRejected](TourGuide& it)
            {
                Box dialog(it.GetWindow());
                QComboBox combo(&dialog);
                combo.addItems({QStringLiteral("one"), QStringLiteral("two")});
                combo.setEnabled(false);
                it.GetRobot().WhenModal(
                    [&](QWidget*)
                    {
                        it.ChooseEntry(&combo, 1);
                        isRejected = dialog.isVisible();
                        dialog.Reject();
                    });
                dialog.Exec();
            });

        QVERIFY(isRejected);
        QCOMPARE(tour.Failures(), QStringList{QStringLiteral("the list did not open")});
    }

    void aPointOutsideThePictureIsNotSelected()
    {
        Tour tour;
        tour.OpenPicture("one.png");

        tour.Play(
            [](TourGuide& it)
            {
                it.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
                it.Check(it.SelectedAt(QPointF(100, 50)) == 255, "not selected");
                it.Check(it.SelectedAt(QPointF(100, 5000)) == 0, "selected below");
                it.Check(it.SelectedAt(QPointF(-3, 50)) == 0, "selected beside");
            });

        QCOMPARE(tour.Failures(), QStringList());
    }

    void leavingADrawnPictureClosesAllThatCameWithIt()
    {
        Tour tour;
        tour.OpenPicture("one.png");
        const Document* first = tour->GetDocument();
        tour.OpenPicture("two.png");
        tour.Play(
            [](TourGuide& it)
            {
                it.GetRobot().WhenModal([&it](QWidget*) { it.GetRobot().Key(Qt::Key_Return); });
                it.GetRobot().Key(Qt::Key_N, Qt::ControlModifier);
            });
        QCOMPARE(tour->GetWindow()->GetDocumentWindows().size(), 3);

        tour->LeaveDrawn();

        QCOMPARE(tour->GetWindow()->GetDocumentWindows().size(), 1);
        QCOMPARE(tour->GetDocument(), first);
        QCOMPARE(tour.Failures(), QStringList());
    }

    void leavingADrawnPictureThatIsClosedKeepsTheOneBefore()
    {
        Tour tour;
        tour.OpenPicture("one.png");
        const Document* first = tour->GetDocument();
        tour.OpenPicture("two.png");
        tour.Play([](TourGuide& it) { it.CloseDiscarding(); });

        tour->LeaveDrawn();

        QCOMPARE(tour->GetDocument(), first);
        QCOMPARE(tour.Failures(), QStringList());
    }
};

NV_TEST_MAIN(tst_TourGuide)
#include "tst_TourGuide.moc"
