// The menu of the whole picture, as a person uses it: its dialogs, what they do to the picture, and every way
// in which nothing is done.

#include "ImageMenu.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGraphicsScene>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QUndoStack>

#include "BrushTool.h"
#include "BusyThreads.h"
#include "CropFrameItem.h"
#include "Document.h"
#include "DocumentWindow.h"
#include "FileTask.h"
#include "GradientTool.h"
#include "KXAnchorSelection.h"
#include "KXCommonComboBox.h"
#include "KXDocumentInterface.h"
#include "MainWindow.h"
#include "ModalDriver.h"
#include "NVAutoCrop.h"
#include "NVCanvasSize.h"
#include "NVDocumentView.h"
#include "NVImageSize.h"
#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

// A red rectangle on white: where it is tells what was done with the picture.
const QRect Spot(40, 20, 60, 30);

QImage Picture()
{
    QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    // 72 an inch.
    image.setDotsPerMeterX(2835);
    QPainter(&image).fillRect(Spot, Qt::red);
    return image;
}

QImage Plain(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

QString TextOf(const QWidget* box)
{
    QString text;
    for (const QLabel* label : box->findChildren<QLabel*>())
        text += label->text();
    return text;
}

template <class Widget>
Widget* Child(QWidget* dialog, const char* name)
{
    auto* child = dialog->findChild<Widget*>(name);
    if (!child)
        QTest::qFail(qPrintable(QString("no %1").arg(name)), __FILE__, __LINE__);
    return child;
}

// The bounds of what is red.
QRect RedOf(const QImage& image)
{
    return ProbeImage(image).BoundsOf(Qt::red, 60);
}

} // namespace

class tst_ImageMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QLocale::setDefault(QLocale::c());
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_folder->filePath("s.ini"), QSettings::IniFormat);
        m_window = std::make_unique<MainWindow>(m_settings.get());
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_settings.reset();
        qApp->setStyleSheet(QString());
    }

    void withoutAPictureTheCommandsAreOff()
    {
        for (const char* text : {"Image Size...", "Canvas Size...", "Auto-crop..."})
            QVERIFY(!action(text)->isEnabled());

        m_window->OpenImage(Picture(), "Picture");
        for (const char* text : {"Image Size...", "Canvas Size...", "Auto-crop..."})
            QVERIFY(action(text)->isEnabled());

        m_window->CloseDocument(m_window->GetDocumentWindows().first());
        for (const char* text : {"Image Size...", "Canvas Size...", "Auto-crop..."})
            QVERIFY(!action(text)->isEnabled());
    }

    void theImageSizeIsAskedForAndGiven()
    {
        open(Picture());
        const QImage before = composition();
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                QVERIFY(qobject_cast<NVImageSize*>(dialog));
                type(dialog, "m_pNewWidth", "400");
                QCOMPARE(Child<QDoubleSpinBox>(dialog, "m_pNewHeight")->value(), 200.0);
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });

        action("Image Size...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(pixels()->GetSize(), QSize(400, 200));
        QCOMPARE(RedOf(composition()), QRect(80, 40, 120, 60));
        QCOMPARE(steps()->undoText(), QString("Image Size"));
        QVERIFY(labelTexts().contains("400 x 200 px"));
        steps()->undo();
        QCOMPARE(composition(), before);
        QVERIFY(labelTexts().contains("200 x 100 px"));
        steps()->redo();
        QCOMPARE(pixels()->GetSize(), QSize(400, 200));
    }

    void theResamplingIsTheOneThatWasChosen()
    {
        open(Picture());
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                Child<KXCommonComboBox>(dialog, "m_pResampleMethod")->setFocus();
                QTest::keyClick(Child<KXCommonComboBox>(dialog, "m_pResampleMethod"), Qt::Key_Home);
                type(dialog, "m_pNewWidth", "230");
                QTest::keyClick(Child<QDoubleSpinBox>(dialog, "m_pNewWidth"), Qt::Key_Return);
            });

        action("Image Size...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(pixels()->GetSize(), QSize(230, 115));
        // White and red alone: nothing was mixed.
        QCOMPARE(ProbeImage(composition()).ColorCount(), 2);
    }

    void whatIsNotAcceptedChangesNothing_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("way");
        for (const char* command : {"Image Size...", "Canvas Size...", "Auto-crop..."})
        {
            for (const char* way : {"cancel", "escape", "close"})
                QTest::addRow("%s %s", command, way) << QString(command) << QString(way);
        }
    }

    void whatIsNotAcceptedChangesNothing()
    {
        QFETCH(QString, command);
        QFETCH(QString, way);
        open(Picture());
        ModalDriver driver(
            [&](QWidget* dialog)
            {
                if (dialog->findChild<QDoubleSpinBox*>("m_pNewWidth"))
                    type(dialog, "m_pNewWidth", "90");
                if (way == "cancel")
                    ModalDriver::Press(dialog, QDialogButtonBox::Cancel);
                else if (way == "escape")
                    ModalDriver::PressKey(dialog, Qt::Key_Escape);
                else
                    ModalDriver::CloseWindow(dialog);
            });

        action(command)->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(composition(), Picture());
        QCOMPARE(steps()->count(), 0);
        QVERIFY(m_window->GetView()->scene()->items().isEmpty());
    }

    void theSameValuesAreNoStep_data()
    {
        QTest::addColumn<QString>("command");
        QTest::newRow("image") << "Image Size...";
        QTest::newRow("canvas") << "Canvas Size...";
    }

    void theSameValuesAreNoStep()
    {
        QFETCH(QString, command);
        open(Picture());
        // What the dialogs cannot show exactly stays as it is.
        pixels()->SetResolution(4000.12345);
        ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, QDialogButtonBox::Ok); });

        action(command)->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(steps()->count(), 0);
        QCOMPARE(pixels()->GetResolution(), 4000.12345);
    }

    void theResolutionAloneIsAStepWithoutPixels()
    {
        open(Picture());
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                type(dialog, "m_pResolution", "96");
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });

        action("Image Size...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(pixels()->GetResolution(), 96.0);
        QCOMPARE(composition(), Picture());
        QCOMPARE(steps()->count(), 1);
        QCOMPARE(document()->GetUndoBytes(), qint64(0));
        steps()->undo();
        QCOMPARE(pixels()->GetResolution(), 72.0);
    }

    void sizeAndResolutionAreOneStep()
    {
        open(Picture());
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                type(dialog, "m_pNewWidth", "100");
                type(dialog, "m_pResolution", "300");
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });

        action("Image Size...")->trigger();

        QCOMPARE(pixels()->GetSize(), QSize(100, 50));
        QCOMPARE(pixels()->GetResolution(), 300.0);
        QCOMPARE(steps()->count(), 1);
        steps()->undo();
        QCOMPARE(pixels()->GetSize(), QSize(200, 100));
        QCOMPARE(pixels()->GetResolution(), 72.0);
    }

    void theCanvasGrowsAboutTheAnchor_data()
    {
        QTest::addColumn<int>("anchor");
        QTest::addColumn<QPoint>("place");
        for (int anchor = 0; anchor < 9; ++anchor)
            QTest::addRow("%d", anchor) << anchor << QPoint(anchor % 3 * 10, anchor / 3 * 20);
    }

    void theCanvasGrowsAboutTheAnchor()
    {
        QFETCH(int, anchor);
        QFETCH(QPoint, place);
        open(Picture());
        ModalDriver driver(
            [&](QWidget* dialog)
            {
                QVERIFY(qobject_cast<NVCanvasSize*>(dialog));
                auto* box = Child<QCheckBox>(dialog, "m_pConstrainProportions");
                QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
                type(dialog, "m_pNewWidth", "220");
                type(dialog, "m_pNewHeight", "140");
                auto* anchors = Child<KXAnchorSelection>(dialog, "m_pAnchorWidget");
                const QPoint cell((anchor % 3 * 2 + 1) * anchors->width() / 6,
                                  (anchor / 3 * 2 + 1) * anchors->height() / 6);
                QWidget* hit = anchors->childAt(cell);
                QTest::mouseClick(hit ? hit : anchors, Qt::LeftButton, Qt::NoModifier,
                                  hit ? hit->mapFrom(anchors, cell) : cell);
                QCOMPARE(int(anchors->GetState()), anchor);
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });

        action("Canvas Size...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(pixels()->GetSize(), QSize(220, 140));
        QCOMPARE(composition().copy(QRect(place, QSize(200, 100))), Picture());
        QCOMPARE(RedOf(composition()), Spot.translated(place));
        QCOMPARE(ProbeImage(composition()).CountOf(Qt::transparent, 0), 220 * 140 - 200 * 100);
        QCOMPARE(steps()->undoText(), QString("Canvas Size"));
        steps()->undo();
        QCOMPARE(composition(), Picture());
    }

    void aCanvasWithoutAnyPixelHasOne()
    {
        open(Picture());

        QVERIFY(menu()->ResizeCanvas(QSize(0, 30), QPoint(0, 0)));

        QCOMPARE(pixels()->GetSize(), QSize(1, 30));
    }

    void allLayersAndTheSelectionChange()
    {
        open(Picture());
        addLayer(Plain(QSize(200, 100), Qt::blue));
        QImage mask(200, 100, QImage::Format_Grayscale8);
        mask.fill(255);
        QVERIFY(pixels()->SetSelectionMask(mask));

        QVERIFY(menu()->Resize(QSize(100, 50), 72, 1));
        QCOMPARE(pixels()->GetLayer(0).image.size(), QSize(100, 50));
        QCOMPARE(pixels()->GetLayer(1).image, Plain(QSize(100, 50), Qt::blue));
        QCOMPARE(pixels()->GetSelectionMask().size(), QSize(100, 50));

        QVERIFY(menu()->ResizeCanvas(QSize(50, 50), QPoint(1, 1)));
        QCOMPARE(pixels()->GetLayer(1).image, Plain(QSize(50, 50), Qt::blue));
        QCOMPARE(pixels()->GetSelectionMask().size(), QSize(50, 50));

        steps()->undo();
        steps()->undo();
        QCOMPARE(pixels()->GetSelectionMask(), mask);
        QCOMPARE(pixels()->GetLayer(0).image, Picture());
    }

    void theCropIsShownBeforeItIsDone()
    {
        open(Picture());
        m_window->GetView()->FitInView();
        ModalDriver driver(
            [&](QWidget* dialog)
            {
                QTRY_COMPARE(frame(), Spot);
                const ProbeImage shown(canvas());
                // Darkened outside, untouched inside.
                QVERIFY(shown.Near(place(20, 50).x(), place(20, 50).y(), QColor(105, 105, 105), 3));
                QVERIFY(shown.Near(place(70, 35).x(), place(70, 35).y(), Qt::red, 1));
                QCOMPARE(composition(), Picture());
                QCOMPARE(steps()->count(), 0);
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });

        action("Auto-crop...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(composition(), Picture().copy(Spot));
        QCOMPARE(steps()->undoText(), QString("Auto-crop"));
        QVERIFY(m_window->GetView()->scene()->items().isEmpty());
        steps()->undo();
        QCOMPARE(composition(), Picture());
        QVERIFY(ProbeImage(canvas()).Near(place(20, 50).x(), place(20, 50).y(), Qt::white, 1));
    }

    void theFrameFollowsTheDialog()
    {
        QImage image = Picture();
        QPainter(&image).fillRect(10, 10, 5, 5, QColor(235, 255, 255));
        open(image);
        ModalDriver driver(
            [&](QWidget* dialog)
            {
                QTRY_COMPARE(frame(), Spot | QRect(10, 10, 5, 5));
                type(dialog, "m_pTolerance", "20");
                QTRY_COMPARE(frame(), Spot);
                click(dialog, "m_pLeft");
                QTRY_COMPARE(frame(), QRect(QPoint(0, 20), Spot.bottomRight()));
                click(dialog, "m_pTransparent");
                QTRY_COMPARE(frame(), image.rect());
                click(dialog, "m_pBottomRight");
                QTRY_COMPARE(frame(), QRect(QPoint(0, 20), Spot.bottomRight()));
                type(dialog, "m_pTolerance", "255");
                QTRY_COMPARE(frame(), QRect());
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            });

        action("Auto-crop...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(composition(), image);
    }

    void aPictureThatIsAllBackgroundSaysSo()
    {
        open(Plain(QSize(60, 40), Qt::blue));
        QString text;
        ModalDriver driver({[](QWidget* dialog) { ModalDriver::Press(dialog, QDialogButtonBox::Ok); },
                            [&text](QWidget* box)
                            {
                                text = TextOf(box);
                                ModalDriver::Press(box, "OK");
                            }});

        action("Auto-crop...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(text.contains("whole picture is background"), qPrintable(text));
        QCOMPARE(composition(), Plain(QSize(60, 40), Qt::blue));
        QCOMPARE(steps()->count(), 0);
    }

    void withoutBackgroundNothingIsCut()
    {
        QImage image = Plain(QSize(60, 40), Qt::blue);
        image.setPixelColor(0, 20, Qt::red);
        image.setPixelColor(59, 20, Qt::red);
        image.setPixelColor(20, 0, Qt::red);
        image.setPixelColor(20, 39, Qt::red);
        open(image);
        ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, QDialogButtonBox::Ok); });

        action("Auto-crop...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(m_window->statusBar()->currentMessage().contains("no background"));
        QCOMPARE(steps()->count(), 0);
    }

    void theLastCropIsOfferedAgain()
    {
        open(Picture());
        ModalDriver first(
            [this](QWidget* dialog)
            {
                click(dialog, "m_pBottomRight");
                click(dialog, "m_pTop");
                type(dialog, "m_pTolerance", "33");
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });
        action("Auto-crop...")->trigger();
        QVERIFY(first.Finished());
        ModalDriver second(
            [](QWidget* dialog)
            {
                const auto* crop = qobject_cast<NVAutoCrop*>(dialog);
                QCOMPARE(int(crop->GetMode()), int(NVAutoCrop::ModeBottomRight));
                QCOMPARE(int(crop->GetArea()), 13);
                QCOMPARE(crop->GetTolerance(), 33);
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            });

        action("Auto-crop...")->trigger();

        QVERIFY(second.Finished());
    }

    void badStoredValuesDoNoHarm()
    {
        m_settings->setValue("autoCrop/mode", -7);
        m_settings->setValue("autoCrop/sides", 4096 + 2);
        m_settings->setValue("autoCrop/tolerance", "much");
        open(Picture());
        ModalDriver driver(
            [](QWidget* dialog)
            {
                const auto* crop = qobject_cast<NVAutoCrop*>(dialog);
                QCOMPARE(int(crop->GetMode()), int(NVAutoCrop::ModeTransparent));
                QCOMPARE(int(crop->GetArea()), int(NVAutoCrop::AreaTop));
                QCOMPARE(crop->GetTolerance(), 0);
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            });

        action("Auto-crop...")->trigger();

        QVERIFY(driver.Finished());
    }

    void whatDoesNotFitIntoMemoryIsRefusedWithItsSize()
    {
        open(Plain(QSize(4, 4), Qt::white));
        for (int i = 0; i < 5000; ++i)
            addLayer(Plain(QSize(4, 4), Qt::transparent));
        QStringList texts;
        const auto read = [&texts](QWidget* box)
        {
            texts += TextOf(box);
            ModalDriver::Press(box, "OK");
        };
        ModalDriver driver({[this](QWidget* dialog)
                            {
                                type(dialog, "m_pNewWidth", "10000");
                                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
                            },
                            read});
        action("Image Size...")->trigger();
        QVERIFY(driver.Finished());
        ModalDriver another(read);
        QVERIFY(!menu()->ResizeCanvas(QSize(10000, 9999), QPoint(1, 1)));
        QVERIFY(another.Finished());

        QVERIFY2(texts.at(0).contains("10000 by 10000 pixels") && texts.at(0).contains("1.82 TiB"),
                 qPrintable(texts.at(0)));
        QVERIFY2(texts.at(1).contains("10000 by 9999 pixels"), qPrintable(texts.at(1)));
        QCOMPARE(pixels()->GetSize(), QSize(4, 4));
        QCOMPARE(steps()->count(), 0);
    }

    void aSideBeyondTheLimitOfDocumentsIsRefused()
    {
        open(Plain(QSize(4, 8), Qt::white));
        QString text;
        ModalDriver driver({[this](QWidget* dialog)
                            {
                                // The other side follows in proportion.
                                type(dialog, "m_pNewWidth", "10000");
                                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
                            },
                            [&text](QWidget* box)
                            {
                                text = TextOf(box);
                                ModalDriver::Press(box, "OK");
                            }});

        action("Canvas Size...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(text.contains("10000 by 20000 pixels") && text.contains("10000 pixels at most"),
                 qPrintable(text));
        QCOMPARE(pixels()->GetSize(), QSize(4, 8));
        QCOMPARE(steps()->count(), 0);
    }

    void theLargestSideIsGiven()
    {
        open(Plain(QSize(4, 8), Qt::white));

        QVERIFY(menu()->ResizeCanvas(QSize(10000, 1), QPoint(0, 0)));
        QCOMPARE(pixels()->GetSize(), QSize(10000, 1));
        QVERIFY(menu()->Resize(QSize(1, 10000), 72, 0));
        QCOMPARE(pixels()->GetSize(), QSize(1, 10000));
    }

    void aPictureBeyondTheLimitMayBecomeSmaller()
    {
        open(Plain(QSize(10002, 2), Qt::white));

        QVERIFY(menu()->ResizeCanvas(QSize(10001, 2), QPoint(0, 0)));
        QCOMPARE(pixels()->GetSize(), QSize(10001, 2));
        ModalDriver driver([](QWidget* box) { ModalDriver::Press(box, "OK"); });
        QVERIFY(!menu()->ResizeCanvas(QSize(10003, 2), QPoint(0, 0)));
        QVERIFY(driver.Finished());
    }

    void longWorkShowsProgressAndCanBeCancelled_data()
    {
        QTest::addColumn<int>("command");
        QTest::newRow("image") << 0;
        QTest::newRow("canvas") << 1;
        QTest::newRow("crop") << 2;
    }

    void longWorkShowsProgressAndCanBeCancelled()
    {
        QFETCH(int, command);
        open(Picture());
        const BusyThreads gate;
        auto* task = m_window->findChild<FileTask*>();
        bool wasShown = false;
        connect(task, &FileTask::BusyChanged, this,
                [&](bool busy)
                {
                    if (!busy)
                        return;
                    wasShown = m_window->statusBar()->findChild<QProgressBar*>()->isVisible();
                    QVERIFY(!m_window->CloseDocument(m_window->GetDocumentWindows().first()));
                    press("Cancel");
                    const_cast<BusyThreads&>(gate).Open();
                });

        QVERIFY(!run(command));

        disconnect(task, nullptr, this, nullptr);
        QVERIFY(wasShown);
        QCOMPARE(composition(), Picture());
        QCOMPARE(steps()->count(), 0);
        QVERIFY(m_window->statusBar()->currentMessage().contains("as it was"));
        // And then it can be done.
        QVERIFY(run(command));
        QCOMPARE(steps()->count(), 1);
    }

    void longWorkThatIsNotCancelledIsDone()
    {
        open(Picture());
        BusyThreads gate;
        auto* task = m_window->findChild<FileTask*>();
        connect(task, &FileTask::BusyChanged, this,
                [&gate](bool busy)
                {
                    if (busy)
                        gate.Open();
                });

        QVERIFY(menu()->Resize(QSize(20, 10), 72, 2));

        disconnect(task, nullptr, this, nullptr);
        QCOMPARE(pixels()->GetSize(), QSize(20, 10));
    }

    void closingTheWindowWhileItWorksCancelsAndStays()
    {
        open(Picture());
        BusyThreads gate;
        auto* task = m_window->findChild<FileTask*>();
        connect(task, &FileTask::BusyChanged, this,
                [&](bool busy)
                {
                    if (!busy)
                        return;
                    QVERIFY(!m_window->close());
                    gate.Open();
                });

        QVERIFY(!menu()->Resize(QSize(20, 10), 72, 2));

        disconnect(task, nullptr, this, nullptr);
        QVERIFY(m_window->isVisible());
        QCOMPARE(pixels()->GetSize(), QSize(200, 100));
    }

    void otherWorkKeepsItFromBeginning()
    {
        open(Picture());
        auto* task = m_window->findChild<FileTask*>();
        BusyThreads gate;
        bool isRefused = false;
        connect(task, &FileTask::BusyChanged, this,
                [&](bool busy)
                {
                    if (!busy)
                        return;
                    isRefused = !menu()->Resize(QSize(20, 10), 72, 2);
                    gate.Open();
                });

        task->Run("Other work", [](FileProgress*) {});

        disconnect(task, nullptr, this, nullptr);
        QVERIFY(isRefused);
        QCOMPARE(pixels()->GetSize(), QSize(200, 100));
    }

    void aStrokeUnderWayIsAStepOfItsOwn()
    {
        open(Picture());
        NVDocumentView* view = m_window->GetView();
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, place(50, 80));
        QVERIFY(m_window->GetBrushTool()->IsStrokeRunning());

        QVERIFY(menu()->Resize(QSize(100, 50), 72, 2));

        QVERIFY(!m_window->GetBrushTool()->IsStrokeRunning());
        QCOMPARE(steps()->count(), 2);
        // The button is still down, but the stroke is over.
        QTest::mouseMove(view->viewport(), place(20, 20));
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, place(20, 20));
        QCOMPARE(steps()->count(), 2);
        steps()->undo();
        steps()->undo();
        QCOMPARE(composition(), Picture());
    }

    void aPendingGradientIsDrawnFirst()
    {
        open(Picture());
        auto* gradient = m_window->FindTool<GradientTool>();
        m_window->ChooseTool(gradient);
        QWidget* canvas = m_window->GetView()->viewport();
        QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, place(20, 50));
        QMouseEvent move(QEvent::MouseMove, place(150, 50), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(canvas, &move);
        QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, place(150, 50));
        QVERIFY(gradient->IsPending());
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                type(dialog, "m_pNewWidth", "100");
                ModalDriver::Press(dialog, QDialogButtonBox::Ok);
            });

        action("Image Size...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(!gradient->IsPending());
        QCOMPARE(steps()->count(), 2);
        QCOMPARE(steps()->undoText(), QString("Image Size"));
    }

    void withoutADocumentNothingHappens()
    {
        QVERIFY(!menu()->Resize(QSize(5, 5), 72, 0));
        QVERIFY(!menu()->ResizeCanvas(QSize(5, 5), QPoint(1, 1)));
        QVERIFY(!menu()->AutoCrop(AutoCropSettings()));
    }

    void aBadSizeOrModeDoesNoHarm()
    {
        open(Picture());
        QVERIFY(!menu()->Resize(QSize(0, 5), 72, 0));
        QVERIFY(!menu()->Resize(QSize(-5, 5), 72, 0));
        QVERIFY(menu()->Resize(QSize(20, 10), 72, 99));
        QVERIFY(menu()->Resize(QSize(30, 10), 72, -1));
        QCOMPARE(steps()->count(), 2);
    }

    void otherDocumentsStayAsTheyAre()
    {
        open(Picture());
        Document* first = document();
        open(Plain(QSize(50, 50), Qt::green));

        QVERIFY(menu()->Resize(QSize(10, 10), 72, 2));

        QCOMPARE(first->GetPixels()->GetSize(), QSize(200, 100));
        QCOMPARE(first->GetUndoStack()->count(), 0);
        QCOMPARE(pixels()->GetSize(), QSize(10, 10));
    }

private:
    ImageMenu* menu() const { return m_window->findChild<ImageMenu*>(); }
    Document* document() const { return m_window->GetDocument(); }
    KXDocumentInterface* pixels() const { return document()->GetPixels(); }
    QUndoStack* steps() const { return document()->GetUndoStack(); }
    QImage composition() const { return pixels()->GetComposition().copy(); }
    QPoint place(double x, double y) const
    {
        return m_window->GetView()->MapFromDocument(QPointF(x, y)).toPoint();
    }
    QImage canvas() const { return m_window->GetView()->viewport()->grab().toImage(); }

    void open(const QImage& image)
    {
        m_window->OpenImage(image, "Picture");
        QCOMPARE(composition(), image);
    }

    void addLayer(const QImage& image)
    {
        KXDocumentInterface::Layer above;
        above.image = image;
        QVERIFY(pixels()->InsertLayer(pixels()->GetLayerCount(), above));
    }

    // That is shown on the canvas.
    QRect frame() const
    {
        for (QGraphicsItem* item : m_window->GetView()->scene()->items())
        {
            if (const auto* found = dynamic_cast<CropFrameItem*>(item))
                return found->GetFrame();
        }
        return QRect(-1, -1, 0, 0);
    }

    bool run(int command)
    {
        if (command == 0)
            return menu()->Resize(QSize(50, 25), 72, 2);
        return command == 1 ? menu()->ResizeCanvas(QSize(50, 25), QPoint(0, 0))
                            : menu()->AutoCrop(AutoCropSettings());
    }

    QAction* action(const QString& text) const
    {
        for (QAction* each : m_window->findChildren<QAction*>())
        {
            if (each->text().remove('&') == text)
                return each;
        }
        qFatal("no action %s", qPrintable(text));
        return nullptr;
    }

    QStringList labelTexts() const
    {
        QStringList texts;
        for (const QLabel* label : m_window->statusBar()->findChildren<QLabel*>())
            texts += label->text();
        return texts;
    }

    void press(const QString& text)
    {
        for (QPushButton* button : m_window->statusBar()->findChildren<QPushButton*>())
        {
            if (button->text() == text)
                QTest::mouseClick(button, Qt::LeftButton);
        }
    }

    // Over the whole text.
    void type(QWidget* dialog, const char* name, const QString& text)
    {
        auto* box = Child<QAbstractSpinBox>(dialog, name);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
    }

    void click(QWidget* dialog, const char* name)
    {
        auto* button = Child<QAbstractButton>(dialog, name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<MainWindow> m_window;
};

NV_TEST_MAIN(tst_ImageMenu)

#include "tst_ImageMenu.moc"
