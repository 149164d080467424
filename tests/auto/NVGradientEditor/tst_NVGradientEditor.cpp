// The gradient editor: its form, its list, the strip with its handles, the colours, and what is saved when.

#include <QAction>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFrame>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSlider>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTranslator>
#include <QtTest>

#include <algorithm>
#include <stdexcept>

#include "ControlNode.h"
#include "GradientStops.h"
#include "KXColorDlg.h"
#include "ModalDriver.h"
#include "NVApplication.h"
#include "NVGradientEditor.h"
#include "NVGradientItemDelegate.h"
#include "NVSpinBox.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

using Gradient = QList<NVGradientStop>;
using GradientList = QList<Gradient>;

namespace
{

constexpr int StripWidth = 400;

NVGradientStop Stop(double position, const QColor& color)
{
    return {position, color, false, false, false};
}

Gradient ThreeStops()
{
    return {Stop(0.0, Qt::red), Stop(0.5, QColor(0, 200, 0)), Stop(1.0, Qt::blue)};
}

Gradient TwoStops()
{
    return {Stop(0.0, Qt::black), Stop(1.0, Qt::white)};
}

Gradient FiveStops()
{
    return {Stop(0.1, Qt::red), Stop(0.3, Qt::yellow), Stop(0.5, Qt::green), Stop(0.7, Qt::cyan),
            Stop(0.9, Qt::blue)};
}

QList<double> Positions(const Gradient& gradient)
{
    QList<double> positions;
    for (const NVGradientStop& stop : gradient)
        positions << stop.GetPosition();
    return positions;
}

// An editor whose strip is 400 pixels wide.
struct Host
{
    explicit Host(const GradientList& list = {ThreeStops(), TwoStops()})
        : dialog(new NVGradientEditor(nullptr))
    {
        View()->setFixedWidth(StripWidth + 2 * View()->frameWidth());
        dialog->Load(list);
    }
    ~Host() { delete dialog; }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    bool Show() const
    {
        dialog->show();
        return QTest::qWaitForWindowActive(dialog) && Viewport()->width() == StripWidth;
    }

    template <class T>
    T* Find(const char* name) const
    {
        T* control = dialog->findChild<T*>(name);
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    QGraphicsView* View() const { return Find<QGraphicsView>("m_pGraphicsView"); }
    QWidget* Viewport() const { return View()->viewport(); }
    QGraphicsScene* Scene() const { return View()->scene(); }
    QListView* List() const { return Find<QListView>("m_pGradientList"); }
    QPushButton* Button(const char* name) const { return Find<QPushButton>(name); }
    QPushButton* Button(QDialogButtonBox::StandardButton which) const
    {
        return Find<QDialogButtonBox>("m_pButtoBox")->button(which);
    }
    QSpinBox* Box(const char* name) const { return Find<QSpinBox>(name); }
    QString ColorNumber() const { return Find<QLabel>("m_pColorIndex")->text(); }
    bool IsUnsaved() const
    {
        const bool apply = Button(QDialogButtonBox::Apply)->isEnabled();
        if (apply != Button(QDialogButtonBox::RestoreDefaults)->isEnabled())
            qFatal("the two buttons differ");
        return apply;
    }
    Gradient Current() const { return dialog->GetGradient(dialog->GetCurrentIndex()); }

    // From left to right, the order of stops as long as no two have the same place.
    QList<ControlNode*> Nodes() const
    {
        QList<ControlNode*> nodes;
        const QList<QGraphicsItem*> items = Scene()->items();
        for (QGraphicsItem* item : items)
        {
            if (item->type() == ControlNode::Type)
                nodes << static_cast<ControlNode*>(item);
        }
        std::stable_sort(nodes.begin(), nodes.end(),
                         [](const ControlNode* a, const ControlNode* b) { return a->x() < b->x(); });
        return nodes;
    }
    QList<double> Places() const
    {
        QList<double> places;
        for (const ControlNode* node : Nodes())
            places << node->x();
        return places;
    }
    // Index of the one selected handle, -1 for none, -2 for several.
    int Selected() const
    {
        const QList<QGraphicsItem*> selected = Scene()->selectedItems();
        if (selected.size() != 1)
            return selected.isEmpty() ? -1 : -2;
        return Nodes().indexOf(static_cast<ControlNode*>(selected.first()));
    }
    int SunkenCount() const
    {
        const QList<ControlNode*> nodes = Nodes();
        return int(std::count_if(nodes.begin(), nodes.end(), [](auto* node) { return node->isSunken(); }));
    }
    QGraphicsRectItem* StripItem() const
    {
        const QList<QGraphicsItem*> items = Scene()->items();
        for (QGraphicsItem* item : items)
        {
            if (auto* strip = qgraphicsitem_cast<QGraphicsRectItem*>(item))
                return strip;
        }
        return nullptr;
    }
    QGradientStops StripStops() const { return StripItem()->brush().gradient()->stops(); }
    QGradientStops RowStops(int row) const
    {
        return List()->model()->index(row, 0).data(Qt::BackgroundRole).value<QBrush>().gradient()->stops();
    }

    QPoint PointOf(int node) const { return View()->mapFromScene(Nodes().at(node)->pos()); }
    void Click(int node) const { QTest::mouseClick(Viewport(), Qt::LeftButton, {}, PointOf(node)); }
    // Off the middle of the strip.
    void DoubleClick(int x, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseDClick(Viewport(), button, {}, QPoint(x, 6));
    }
    void Send(QEvent::Type type, const QPoint& place) const
    {
        const bool moves = type == QEvent::MouseMove;
        const bool down = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, place, Viewport()->mapToGlobal(place), moves ? Qt::NoButton : Qt::LeftButton,
                          down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Viewport(), &event);
    }
    // In three moves.
    void Drag(int node, const QPoint& to) const
    {
        const QPoint from = PointOf(node);
        Send(QEvent::MouseButtonPress, from);
        for (int step = 1; step <= 3; ++step)
            Send(QEvent::MouseMove, from + (to - from) * step / 3);
        Send(QEvent::MouseButtonRelease, to);
    }
    static void LetHandlesGo() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    NVGradientEditor* dialog;
};

} // namespace

class tst_NVGradientEditor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void formHasItsTitleNameAndSize();
    void controlStandsInItsPlace_data();
    void controlStandsInItsPlace();
    void buttonHasItsTextAndTooltip_data();
    void buttonHasItsTextAndTooltip();
    void listTakesNoFocusAndIsNotEdited();
    void listShowsRowsByTheDelegate();
    void stripViewIsAsInTheForm();
    void colorControlHasItsRangeAndTooltip_data();
    void colorControlHasItsRangeAndTooltip();
    void sliderAndBoxFollowOneAnother_data();
    void sliderAndBoxFollowOneAnother();
    void colorNumberAndIndicatorAreAsInTheForm();
    void buttonBoxHasItsFourButtons();
    void textsAreTranslatedUnderTheFormsName();

    void startsWithoutGradients();
    void loadMakesTheFirstRowCurrent();
    void loadOfAnEmptyListIntoANewDialogLeavesThePaneEnabled();
    void loadOfAnEmptyListUnbindsThePane();
    void loadSharesItsList();
    void currentIndexIsToldOnceAChange();
    void currentIndexIsToldBeforeThePaneFollows();
    void rowsShowTheirGradients();
    void gradientOfAnyIndexIsACopyOrEmpty();
    void setGradientReplacesAndRepaintsNothing();
    void setGradientThrowsForABadIndex_data();
    void setGradientThrowsForABadIndex();
    void addGradientAppendsAndMakesItCurrent();
    void gradientOfOneStopIsNotAdded();
    void newButtonAddsDarkBlueToCyan();
    void copyButtonAppendsTheCurrentGradient();
    void deleteButtonGoesToTheNeighbour_data();
    void deleteButtonGoesToTheNeighbour();
    void deletingTheLastGradientEmptiesTheList();
    void deletingWithoutACurrentRowCountsAsAnEdit();
    void popupShowsTheDialogAtItsPointNotModal();

    void handlesStandAtTheirStops();
    void changeOfRowRebuildsTheHandles();
    void clickSelectsAHandleAndShowsItsColor();
    void lateDeselectionOfTheHandleBeforeChangesNothing();
    void dragMovesTheStopAlongTheStrip();
    void dragStopsAtItsNeighbours_data();
    void dragStopsAtItsNeighbours();
    void stopsAtOnePlaceCannotPassOneAnother();
    void moveOfAHandleThatIsNotSelectedIsNotFollowed();
    void arrowKeysMoveTheSelectedStop();
    void doubleClickAddsAWhiteStop();
    void doubleClickLeftOfTheFirstInsertsInFront();
    void doubleClickAtTheSamePlaceGoesBehind();
    void doubleClickOnAHandleAddsNothing();
    void doubleClickWithAnyButtonAdds();
    void stopAddedOutsideStaysOnTheStrip();
    void leftClickBesideTheHandlesKeepsTheSelection();
    void rightClickBesideTheHandlesDeselects();
    void deleteKeySelectsTheStopBefore_data();
    void deleteKeySelectsTheStopBefore();
    void deleteKeyLeavesTwoStops();
    void deleteKeyInANumberBoxDeletesADigit();
    void removeButtonDoesAsTheKey();
    void removeAllKeepsFirstAndLast_data();
    void removeAllKeepsFirstAndLast();
    void removeButtonsNeedThreeStops();
    void removedHandlesGoWithTheEventLoop();
    void resizingKeepsStopsAndSelection();
    void dialogMadeLargerKeepsStopsAndSelection();
    void sceneSizeSetByTheHostCountsAsAMove();
    void stripKeepsItsSizeWhileNoRowIsCurrent();
    void stripOfNoWidthKeepsThePositions();
    void manyEditsLeaveNoHandleOver();
    void eventsOfOthersAreLeftAlone();

    void colorControlsWriteTheStop_data();
    void colorControlsWriteTheStop();
    void typedNumberWritesTheStopAtEachDigit();
    void opacityLosesAHundredth();
    void selectingAStopWritesNothing();
    void changeIsWrittenOnceAfterManySelections();
    void flagsGoWithTheFirstEdit();
    void opaqueRedHasItsNumber();
    void applicationColorsAreTakenOnce_data();
    void applicationColorsAreTakenOnce();
    void customColorButtonStartsBlack();
    void customColorPreviewsInTheStripAlone();
    void acceptedCustomColorIsWritten();
    void customColorLeftUnchosenChangesNothing_data();
    void customColorLeftUnchosenChangesNothing();
    void customColorForAStopThatIsGoneIsDropped();
    void colorSourcesNeedASelectedStop_data();
    void colorSourcesNeedASelectedStop();

    void stripShowsTheGradientOverTheChecker();
    void indicatorShowsTheColorOverTheChecker();
    void picturesAreSharpOnADenseScreen();

    void applySavesOnceAndCleans();
    void okSavesOnlyWhatIsUnsaved();
    void enterIsOkFromTheStart_data();
    void enterIsOkFromTheStart();
    void cancelUndoesNothing();
    void restoreGoesBackToTheAppliedState();
    void restoreGoesBackToTheRowThatWasSet();
    void declaredSignalsStaySilent();

    void diesInAnyState_data();
    void diesInAnyState();
    void diesWhileItRuns();
    void diesUnderItsColorDialog();
};

void tst_NVGradientEditor::cleanup()
{
    NVApplication::GetInstance()->SetForeground(Qt::black);
    NVApplication::GetInstance()->SetBackground(Qt::white);
    Host::LetHandlesGo();
}

void tst_NVGradientEditor::formHasItsTitleNameAndSize()
{
    NVGradientEditor dialog(nullptr);

    QCOMPARE(dialog.windowTitle(), QString("Gradient editor"));
    QCOMPARE(dialog.windowOpacity(), 1.0);
    QCOMPARE(dialog.Content()->objectName(), QString("GradientEditor"));
    QCOMPARE(dialog.Content()->size(), QSize(665, 356));
}

void tst_NVGradientEditor::controlStandsInItsPlace_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QRect>("cell"); // column, row, columns, rows

    const auto row = [](const char* parent, const char* name, const char* className, const QRect& cell)
    { QTest::newRow(name) << parent << name << className << cell; };
    row("GradientEditor", "m_pGradientList", "QListView", {0, 0, 3, 1});
    row("GradientEditor", "m_pEditor", "QWidget", {3, 0, 1, 1});
    row("GradientEditor", "m_pNew", "QPushButton", {0, 1, 1, 1});
    row("GradientEditor", "m_pCopy", "QPushButton", {1, 1, 1, 1});
    row("GradientEditor", "m_pDelete", "QPushButton", {2, 1, 1, 1});
    row("GradientEditor", "m_pButtoBox", "QDialogButtonBox", {3, 1, 1, 1});
    row("m_pEditor", "m_pGraphicsView", "QGraphicsView", {0, 0, 6, 1});
    row("m_pEditor", "m_pForeground", "QPushButton", {0, 1, 1, 1});
    row("m_pEditor", "m_pBackground", "QPushButton", {1, 1, 1, 1});
    row("m_pEditor", "m_pCustomColor", "QPushButton", {2, 1, 1, 1});
    row("m_pEditor", "", "", {3, 1, 1, 1});
    row("m_pEditor", "m_pRemove", "QPushButton", {4, 1, 1, 1});
    row("m_pEditor", "m_pRemoveAll", "QPushButton", {5, 1, 1, 1});
    row("m_pEditor", "m_pEditTabColorInstruments", "QFrame", {0, 2, 6, 1});
    const char* const frame = "m_pEditTabColorInstruments";
    const QStringList colors{"Red", "Green", "Blue", "Opacity"};
    for (int i = 0; i < colors.size(); ++i)
    {
        const QByteArray control = QByteArray("m_pEditTab") + colors[i].toLatin1();
        row(frame, control + "Label", "QLabel", {0, i, 1, 1});
        row(frame, control + "Slider", "QSlider", {1, i, 1, 1});
        row(frame, QByteArray("m_p") + colors[i].toLatin1(), "NVSpinBox", {2, i, 1, 1});
    }
    row(frame, "m_pColorIndex", "QLabel", {0, 4, 1, 1});
    row(frame, "COLORINDICATOR", "QLabel", {2, 4, 1, 1});
    QTest::newRow("last spacer") << frame << ""
                                 << "" << QRect(0, 5, 3, 1);
}

void tst_NVGradientEditor::controlStandsInItsPlace()
{
    QFETCH(const QString, parent);
    QFETCH(const QString, name);
    QFETCH(const QString, className);
    QFETCH(const QRect, cell);
    const NVGradientEditor dialog(nullptr);

    const auto* grid = qobject_cast<QGridLayout*>(dialog.findChild<QWidget*>(parent)->layout());
    QVERIFY(grid);
    QLayoutItem* item = grid->itemAtPosition(cell.top(), cell.left());
    QVERIFY(item);
    QRect place;
    int rows = 0;
    int columns = 0;
    int row = 0;
    int column = 0;
    grid->getItemPosition(grid->indexOf(item->widget()), &row, &column, &rows, &columns);
    if (name.isEmpty())
    {
        QVERIFY(item->spacerItem());
        return;
    }
    QCOMPARE(item->widget()->objectName(), name);
    QCOMPARE(item->widget()->metaObject()->className(), className.toLatin1().constData());
    QCOMPARE(QRect(column, row, columns, rows), cell);
}

void tst_NVGradientEditor::buttonHasItsTextAndTooltip_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tooltip");
    QTest::addColumn<bool>("focus");
    QTest::addColumn<bool>("enabled");

    const auto row = [](const char* name, const char* text, const char* tooltip, bool focus, bool enabled)
    { QTest::newRow(name) << name << text << tooltip << focus << enabled; };
    row("m_pNew", "New", "", true, true);
    row("m_pCopy", "Copy", "", true, true);
    row("m_pDelete", "Delete", "", true, true);
    row("m_pForeground", "Fc", "Foreground Color", false, true);
    row("m_pBackground", "Bc", "Background Color", false, true);
    row("m_pCustomColor", "", "Custom color", false, true);
    row("m_pRemove", "Remove", "Remove the current stop point", false, false);
    row("m_pRemoveAll", "Remove all", "Remove all stop points", false, false);
}

void tst_NVGradientEditor::buttonHasItsTextAndTooltip()
{
    QFETCH(const QString, name);
    QFETCH(const bool, focus);
    const NVGradientEditor dialog(nullptr);
    const auto* button = dialog.findChild<QPushButton*>(name);

    QVERIFY(button);
    QTEST(button->text(), "text");
    QTEST(button->toolTip(), "tooltip");
    QTEST(button->isEnabled(), "enabled");
    QCOMPARE(button->focusPolicy(), focus ? Qt::StrongFocus : Qt::NoFocus);
    QCOMPARE(button->maximumSize(),
             name == "m_pCustomColor" ? QSize(32, 32) : QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    QVERIFY(!button->isCheckable());
}

void tst_NVGradientEditor::listTakesNoFocusAndIsNotEdited()
{
    const Host host;

    QCOMPARE(host.List()->focusPolicy(), Qt::NoFocus);
    QCOMPARE(host.List()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(host.List()->editTriggers(), QAbstractItemView::NoEditTriggers);
    QVERIFY(!host.List()->testAttribute(Qt::WA_MacShowFocusRect));
    QCOMPARE(host.List()->selectionMode(), QAbstractItemView::SingleSelection);
}

void tst_NVGradientEditor::listShowsRowsByTheDelegate()
{
    const Host host;

    QVERIFY(qobject_cast<NVGradientItemDelegate*>(host.List()->itemDelegate()));
    QCOMPARE(host.List()->itemDelegate()->parent(), host.List());
    auto* rows = qobject_cast<QStandardItemModel*>(host.List()->model());
    QVERIFY(rows);
    QCOMPARE(rows->parent(), host.List());
    QCOMPARE(rows->columnCount(), 1);
    QCOMPARE(rows->rowCount(), 2);
    QCOMPARE(rows->index(0, 0).data().toString(), QString());
}

void tst_NVGradientEditor::stripViewIsAsInTheForm()
{
    const Host host;
    const QGraphicsView* view = host.View();

    QCOMPARE(view->minimumHeight(), 32);
    QCOMPARE(view->maximumHeight(), 32);
    QCOMPARE(view->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(view->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(view->alignment(), Qt::AlignLeft | Qt::AlignTop);
    QCOMPARE(view->transformationAnchor(), QGraphicsView::AnchorViewCenter);
    QCOMPARE(view->resizeAnchor(), QGraphicsView::AnchorViewCenter);
    QCOMPARE(view->viewportUpdateMode(), QGraphicsView::FullViewportUpdate);
    QCOMPARE(view->toolTip(), QString("Doubleclick to add a gradient stop point"));
    QCOMPARE(view->scene()->parent(), view);
    QCOMPARE(host.StripItem()->pen(), QPen(Qt::NoPen));
    QCOMPARE(host.StripItem()->flags() & (QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable),
             QGraphicsItem::GraphicsItemFlags());
    const QImage tile = view->backgroundBrush().textureImage();
    QCOMPARE(tile.size(), QSize(10, 10));
    QCOMPARE(tile.pixelColor(0, 0), QColor(Qt::white));
    QCOMPARE(tile.pixelColor(5, 4), QColor(Qt::black));
    QCOMPARE(tile.pixelColor(4, 5), QColor(Qt::black));
    QCOMPARE(tile.pixelColor(5, 5), QColor(Qt::white));
    QCOMPARE(view->actions().size(), 1);
    QCOMPARE(view->actions().constFirst()->shortcut(), QKeySequence(Qt::Key_Delete));
    QCOMPARE(view->actions().constFirst()->shortcutContext(), Qt::WindowShortcut);
}

void tst_NVGradientEditor::colorControlHasItsRangeAndTooltip_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<QString>("sliderTip");
    QTest::addColumn<QString>("boxTip");

    QTest::newRow("red") << "Red"
                         << "R:" << 255 << "Red value (0 - 255)"
                         << "Red value (0 - 255)";
    QTest::newRow("green") << "Green"
                           << "G:" << 255 << "Green value (0 - 255)"
                           << "Green value (0 - 255)";
    QTest::newRow("blue, whose box has no tooltip") << "Blue"
                                                    << "B:" << 255 << "Blue value (0 - 255)"
                                                    << "";
    QTest::newRow("opacity") << "Opacity"
                             << "Opacity:" << 100 << "Opacity (0 -100%)"
                             << "Opacity (0 -100%)";
}

void tst_NVGradientEditor::colorControlHasItsRangeAndTooltip()
{
    QFETCH(const QString, name);
    QFETCH(const int, maximum);
    const NVGradientEditor dialog(nullptr);
    const auto* label = dialog.findChild<QLabel*>("m_pEditTab" + name + "Label");
    const auto* slider = dialog.findChild<QSlider*>("m_pEditTab" + name + "Slider");
    const auto* box = dialog.findChild<QSpinBox*>("m_p" + name);

    QTEST(label->text(), "text");
    QCOMPARE(label->minimumWidth(), 90);
    QCOMPARE(label->maximumWidth(), 90);
    QVERIFY(label->alignment() & Qt::AlignRight);
    QCOMPARE(label->buddy(), static_cast<const QWidget*>(box));
    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->focusPolicy(), Qt::NoFocus);
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum(), maximum);
    QTEST(slider->toolTip(), "sliderTip");
    QVERIFY(!slider->accessibleName().isEmpty());
    QCOMPARE(box->minimum(), 0);
    QCOMPARE(box->maximum(), maximum);
    QCOMPARE(box->maximumWidth(), 60);
    QCOMPARE(box->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(box->suffix(), QString());
    QTEST(box->toolTip(), "boxTip");
}

void tst_NVGradientEditor::sliderAndBoxFollowOneAnother_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"Red", "Green", "Blue", "Opacity"})
        QTest::newRow(name) << name;
}

void tst_NVGradientEditor::sliderAndBoxFollowOneAnother()
{
    QFETCH(const QString, name);
    const NVGradientEditor dialog(nullptr);
    auto* slider = dialog.findChild<QSlider*>("m_pEditTab" + name + "Slider");
    auto* box = dialog.findChild<QSpinBox*>("m_p" + name);

    slider->setValue(77);
    QCOMPARE(box->value(), 77);
    box->setValue(12);
    QCOMPARE(slider->value(), 12);
}

void tst_NVGradientEditor::colorNumberAndIndicatorAreAsInTheForm()
{
    const NVGradientEditor dialog(nullptr);
    const auto* number = dialog.findChild<QLabel*>("m_pColorIndex");
    const auto* indicator = dialog.findChild<QLabel*>("COLORINDICATOR");

    QCOMPARE(number->text(), QString("#00000000"));
    QCOMPARE(number->minimumWidth(), 90);
    QCOMPARE(number->maximumWidth(), 90);
    QVERIFY(number->alignment() & Qt::AlignRight);
    QCOMPARE(number->textInteractionFlags(), Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QVERIFY(indicator);
    QCOMPARE(indicator->maximumSize(), QSize(60, 20));
    const auto* frame = dialog.findChild<QFrame*>("m_pEditTabColorInstruments");
    QCOMPARE(frame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame->frameShadow(), QFrame::Sunken);
}

void tst_NVGradientEditor::buttonBoxHasItsFourButtons()
{
    const Host host;

    QCOMPARE(host.Find<QDialogButtonBox>("m_pButtoBox")->standardButtons(),
             QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply |
                 QDialogButtonBox::RestoreDefaults);
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::textsAreTranslatedUnderTheFormsName()
{
    class Shouting : public QTranslator
    {
    public:
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return qstrcmp(context, "GradientEditor") == 0 ? QString::fromUtf8(text).toUpper() : QString();
        }
        bool isEmpty() const override { return false; }
    } translator;
    QCoreApplication::installTranslator(&translator);
    const Host host;
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(host.dialog->windowTitle(), QString("GRADIENT EDITOR"));
    for (const char* name : {"m_pNew", "m_pCopy", "m_pDelete", "m_pForeground", "m_pRemove", "m_pRemoveAll"})
    {
        const QString text = host.Button(name)->text();
        QVERIFY2(!text.isEmpty() && text == text.toUpper(), name);
    }
    QCOMPARE(host.Find<QLabel>("m_pEditTabOpacityLabel")->text(), QString("OPACITY:"));
    QCOMPARE(host.View()->toolTip(), QString("DOUBLECLICK TO ADD A GRADIENT STOP POINT"));
}

void tst_NVGradientEditor::startsWithoutGradients()
{
    const NVGradientEditor dialog(nullptr);

    QCOMPARE(dialog.GetGradientCount(), 0);
    QCOMPARE(dialog.GetCurrentIndex(), -1);
    QVERIFY(dialog.GetGradients().isEmpty());
}

void tst_NVGradientEditor::loadMakesTheFirstRowCurrent()
{
    Host host{GradientList()};
    SignalLog log(host.dialog);

    host.dialog->Load({ThreeStops(), TwoStops()});
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(0)"}));
    QCOMPARE(host.dialog->GetCurrentIndex(), 0);
    QCOMPARE(host.dialog->GetGradientCount(), 2);
    QVERIFY(!host.IsUnsaved());
    QVERIFY(host.Button("m_pCopy")->isEnabled());
    QVERIFY(host.Button("m_pDelete")->isEnabled());
    QVERIFY(host.Find<QWidget>("m_pEditor")->isEnabled());

    host.dialog->SetCurrentIndex(1);
    log.Clear();
    host.dialog->NewGradient();
    QVERIFY(host.IsUnsaved());
    log.Clear();
    host.dialog->Load({TwoStops()});
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)", "CurrentIndexChanged(0)"}));
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::loadOfAnEmptyListIntoANewDialogLeavesThePaneEnabled()
{
    Host host{GradientList()};
    SignalLog log(host.dialog);

    host.dialog->Load({});

    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(host.Find<QWidget>("m_pEditor")->isEnabled());
    QVERIFY(host.Nodes().isEmpty());
    QCOMPARE(host.StripItem()->brush(), QBrush());
    QVERIFY(!host.Button("m_pCopy")->isEnabled());
    QVERIFY(!host.Button("m_pDelete")->isEnabled());
}

void tst_NVGradientEditor::loadOfAnEmptyListUnbindsThePane()
{
    Host host;
    SignalLog log(host.dialog);

    host.dialog->Load({});

    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)"}));
    QVERIFY(!host.Find<QWidget>("m_pEditor")->isEnabled());
    QVERIFY(host.Nodes().isEmpty());
    QVERIFY(!host.Button("m_pCopy")->isEnabled());
    QCOMPARE(host.List()->model()->rowCount(), 0);
    // No stops are left to draw.
    host.dialog->UpdateEditorBackground();
    QCOMPARE(host.StripStops(), QLinearGradient().stops());
}

void tst_NVGradientEditor::loadSharesItsList()
{
    const GradientList list{ThreeStops(), TwoStops()};
    const Host host(list);

    QVERIFY(host.dialog->GetGradients().isSharedWith(list));
}

void tst_NVGradientEditor::currentIndexIsToldOnceAChange()
{
    Host host;
    SignalLog log(host.dialog);

    host.dialog->SetCurrentIndex(1);
    host.dialog->SetCurrentIndex(1);
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(1)"}));
    log.Clear();

    QVERIFY(host.Show());
    QTest::mouseClick(host.List()->viewport(), Qt::LeftButton, {},
                      host.List()->visualRect(host.List()->model()->index(0, 0)).center());
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(0)"}));
    log.Clear();

    host.dialog->SetCurrentIndex(2);
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)"}));
    QCOMPARE(host.dialog->GetCurrentIndex(), -1);
    QVERIFY(!host.Button("m_pCopy")->isEnabled());
    QVERIFY(!host.Button("m_pDelete")->isEnabled());
    QVERIFY(!host.Find<QWidget>("m_pEditor")->isEnabled());
}

void tst_NVGradientEditor::currentIndexIsToldBeforeThePaneFollows()
{
    const Host host;
    QStringList seen;
    connect(host.dialog, &NVGradientEditor::CurrentIndexChanged, host.dialog,
            [&](int row)
            {
                seen << QString("%1: copy %2, delete %3, pane %4, %5 handles")
                            .arg(row)
                            .arg(host.Button("m_pCopy")->isEnabled())
                            .arg(host.Button("m_pDelete")->isEnabled())
                            .arg(host.Find<QWidget>("m_pEditor")->isEnabled())
                            .arg(host.Nodes().size());
            });

    host.dialog->SetCurrentIndex(1);
    host.dialog->SetCurrentIndex(-1);
    host.dialog->SetCurrentIndex(0);

    QCOMPARE(seen,
             QStringList({"1: copy 1, delete 1, pane 1, 3 handles", "-1: copy 0, delete 0, pane 1, 2 handles",
                          "0: copy 1, delete 1, pane 0, 0 handles"}));
}

void tst_NVGradientEditor::rowsShowTheirGradients()
{
    const Host host;

    QCOMPARE(host.RowStops(0), ToGradientStops(ThreeStops()));
    QCOMPARE(host.RowStops(1), ToGradientStops(TwoStops()));
    const QBrush brush = host.List()->model()->index(0, 0).data(Qt::BackgroundRole).value<QBrush>();
    QCOMPARE(brush.style(), Qt::LinearGradientPattern);
    const auto* gradient = static_cast<const QLinearGradient*>(brush.gradient());
    QCOMPARE(gradient->start(), QPointF(0, 0));
    QCOMPARE(gradient->finalStop(), QPointF(1, 0));
}

void tst_NVGradientEditor::gradientOfAnyIndexIsACopyOrEmpty()
{
    const Host host;

    QCOMPARE(host.dialog->GetGradient(1), TwoStops());
    QCOMPARE(host.dialog->GetGradient(-1), Gradient());
    QCOMPARE(host.dialog->GetGradient(2), Gradient());
}

void tst_NVGradientEditor::setGradientReplacesAndRepaintsNothing()
{
    Host host;
    SignalLog log(host.dialog);

    host.dialog->SetGradient(0, FiveStops());

    QCOMPARE(host.dialog->GetGradient(0), FiveStops());
    QCOMPARE(host.RowStops(0), ToGradientStops(ThreeStops()));
    QCOMPARE(host.StripStops(), ToGradientStops(ThreeStops()));
    QCOMPARE(host.Nodes().size(), 3);
    QVERIFY(!host.IsUnsaved());
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVGradientEditor::setGradientThrowsForABadIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("below") << -1;
    QTest::newRow("count") << 2;
    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVGradientEditor::setGradientThrowsForABadIndex()
{
    QFETCH(const int, index);
    Host host;
    QByteArray message;

    try
    {
        host.dialog->SetGradient(index, FiveStops());
    }
    catch (const std::out_of_range& error)
    {
        message = error.what();
    }

    QCOMPARE(message,
             "An index " + QByteArray::number(index) +
                 " is out of range.File src/NVGradientEditor, line 258");
    QCOMPARE(host.dialog->GetGradients(), GradientList({ThreeStops(), TwoStops()}));
}

void tst_NVGradientEditor::addGradientAppendsAndMakesItCurrent()
{
    Host host;
    SignalLog log(host.dialog);

    host.dialog->AddGradient(FiveStops());

    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(2)"}));
    QCOMPARE(host.dialog->GetGradients(), GradientList({ThreeStops(), TwoStops(), FiveStops()}));
    QCOMPARE(host.RowStops(2), ToGradientStops(FiveStops()));
    QCOMPARE(host.Nodes().size(), 5);
    QVERIFY(host.IsUnsaved());

    // One that stands in the list itself.
    host.dialog->AddGradient(host.dialog->GetGradients().constFirst());
    QCOMPARE(host.Current(), ThreeStops());
}

void tst_NVGradientEditor::gradientOfOneStopIsNotAdded()
{
    Host host;

    host.dialog->AddGradient({});
    host.dialog->AddGradient({Stop(0.5, Qt::red)});

    QCOMPARE(host.dialog->GetGradientCount(), 2);
    QCOMPARE(host.List()->model()->rowCount(), 2);
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::newButtonAddsDarkBlueToCyan()
{
    const Host host;
    QVERIFY(host.Show());
    SignalLog log(host.dialog);

    QTest::mouseClick(host.Button("m_pNew"), Qt::LeftButton);

    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(2)"}));
    QCOMPARE(host.Current(), Gradient({Stop(0.0, Qt::darkBlue), Stop(1.0, Qt::cyan)}));
    QCOMPARE(host.Places(), QList<double>({0.0, double(StripWidth)}));
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::copyButtonAppendsTheCurrentGradient()
{
    const Host host;
    QVERIFY(host.Show());

    QTest::mouseClick(host.Button("m_pCopy"), Qt::LeftButton);

    QCOMPARE(host.dialog->GetGradients(), GradientList({ThreeStops(), TwoStops(), ThreeStops()}));
    QCOMPARE(host.dialog->GetCurrentIndex(), 2);
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::deleteButtonGoesToTheNeighbour_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("told");
    QTest::addColumn<int>("left"); // number of stops of the current gradient

    // The first number is still the one from before, unless the neighbour stands above.
    QTest::newRow("first") << 0 << QStringList({"CurrentIndexChanged(1)", "CurrentIndexChanged(0)"}) << 2;
    QTest::newRow("middle") << 1 << QStringList({"CurrentIndexChanged(2)", "CurrentIndexChanged(1)"}) << 5;
    QTest::newRow("last") << 2 << QStringList({"CurrentIndexChanged(1)", "CurrentIndexChanged(1)"}) << 2;
}

void tst_NVGradientEditor::deleteButtonGoesToTheNeighbour()
{
    QFETCH(const int, row);
    QFETCH(const int, left);
    GradientList list{ThreeStops(), TwoStops(), FiveStops()};
    const Host host(list);
    QVERIFY(host.Show());
    host.dialog->SetCurrentIndex(row);
    SignalLog log(host.dialog);
    QList<int> counts;
    connect(host.dialog, &NVGradientEditor::CurrentIndexChanged, host.dialog,
            [&] { counts << host.dialog->GetGradientCount(); });

    QTest::mouseClick(host.Button("m_pDelete"), Qt::LeftButton);

    QTEST(log.Entries(), "told");
    QCOMPARE(counts, QList<int>({3, 2}));
    list.removeAt(row);
    QCOMPARE(host.dialog->GetGradients(), list);
    QCOMPARE(host.List()->model()->rowCount(), 2);
    QCOMPARE(host.Current().size(), left);
    QCOMPARE(host.Nodes().size(), left);
    QCOMPARE(host.StripStops(), ToGradientStops(host.Current()));
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::deletingTheLastGradientEmptiesTheList()
{
    const Host host({ThreeStops()});
    QVERIFY(host.Show());
    SignalLog log(host.dialog);

    QTest::mouseClick(host.Button("m_pDelete"), Qt::LeftButton);

    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)", "CurrentIndexChanged(-1)"}));
    QCOMPARE(host.dialog->GetGradientCount(), 0);
    QVERIFY(host.Nodes().isEmpty());
    QVERIFY(!host.Find<QWidget>("m_pEditor")->isEnabled());
    QVERIFY(!host.Button("m_pCopy")->isEnabled());
    QVERIFY(!host.Button("m_pDelete")->isEnabled());
    QVERIFY(host.Button("m_pNew")->isEnabled());
    QVERIFY(host.IsUnsaved());
    // The picture of the deleted gradient stays in the disabled strip.
    QCOMPARE(host.StripStops(), ToGradientStops(ThreeStops()));

    QTest::mouseClick(host.Button("m_pNew"), Qt::LeftButton);
    QCOMPARE(host.Nodes().size(), 2);
    QVERIFY(host.Find<QWidget>("m_pEditor")->isEnabled());
}

void tst_NVGradientEditor::deletingWithoutACurrentRowCountsAsAnEdit()
{
    Host host;
    host.dialog->SetCurrentIndex(-1);
    SignalLog log(host.dialog);

    host.dialog->DeleteGradient();

    QCOMPARE(host.dialog->GetGradientCount(), 2);
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)"}));
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::popupShowsTheDialogAtItsPointNotModal()
{
    const Host host;

    host.dialog->Popup(QPoint(30, 40));

    QVERIFY(host.dialog->isVisible());
    QVERIFY(!host.dialog->isModal());
    QCOMPARE(host.dialog->pos(), QPoint(30, 40));
}

void tst_NVGradientEditor::handlesStandAtTheirStops()
{
    const Host host({FiveStops()});
    QVERIFY(host.Show());

    QCOMPARE(host.Places(), QList<double>({40, 120, 200, 280, 360}));
    for (const ControlNode* node : host.Nodes())
        QCOMPARE(node->y(), 15.0);
    QCOMPARE(host.StripItem()->rect(), QRectF(0, 0, 400, 30));
    QCOMPARE(host.Scene()->sceneRect(), QRectF(0, 0, 400, 30));
    QCOMPARE(host.Selected(), 0);
    QVERIFY(host.Nodes().constFirst()->isSunken());
    QCOMPARE(host.SunkenCount(), 1);
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::changeOfRowRebuildsTheHandles()
{
    const Host host({FiveStops(), TwoStops()});
    QVERIFY(host.Show());
    QList<QPointer<ControlNode>> before;
    for (ControlNode* node : host.Nodes())
        before << node;

    host.dialog->SetCurrentIndex(1);

    for (const QPointer<ControlNode>& node : before)
    {
        QVERIFY(node); // until the event loop runs
        QVERIFY(!node->scene());
        QVERIFY(!node->isVisible());
    }
    Host::LetHandlesGo();
    QCOMPARE(std::count_if(before.begin(), before.end(), [](const auto& node) { return !node.isNull(); }), 0);
    QCOMPARE(host.Places(), QList<double>({0, 400}));
    QCOMPARE(host.Selected(), 0);
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::clickSelectsAHandleAndShowsItsColor()
{
    const Host host({{Stop(0.0, Qt::red), Stop(0.5, QColor(10, 20, 30, 40)), Stop(1.0, Qt::blue)}});
    QVERIFY(host.Show());

    host.Click(1);

    QCOMPARE(host.Selected(), 1);
    QCOMPARE(host.SunkenCount(), 1);
    QVERIFY(host.Nodes().at(1)->isSunken());
    QCOMPARE(host.Box("m_pRed")->value(), 10);
    QCOMPARE(host.Box("m_pGreen")->value(), 20);
    QCOMPARE(host.Box("m_pBlue")->value(), 30);
    QCOMPARE(host.Box("m_pOpacity")->value(), 15);
    QCOMPARE(host.Find<QSlider>("m_pEditTabGreenSlider")->value(), 20);
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::lateDeselectionOfTheHandleBeforeChangesNothing()
{
    const Host host;
    QVERIFY(host.Show());

    host.Nodes().at(1)->setSelected(true);
    host.Nodes().at(0)->setSelected(false);

    QCOMPARE(host.SunkenCount(), 1);
    host.Box("m_pRed")->setValue(9);
    QCOMPARE(host.Current()[1].GetColor(), QColor(9, 200, 0));
    QCOMPARE(host.Current()[0], ThreeStops()[0]);
}

void tst_NVGradientEditor::dragMovesTheStopAlongTheStrip()
{
    const Host host;
    QVERIFY(host.Show());

    host.Drag(1, QPoint(300, 4));

    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.75, 1.0}));
    QCOMPARE(host.Places(), QList<double>({0, 300, 400}));
    QCOMPARE(host.Nodes().at(1)->y(), 15.0);
    QCOMPARE(host.Selected(), 1);
    QCOMPARE(host.StripStops(), ToGradientStops(host.Current()));
    QCOMPARE(host.RowStops(0), ToGradientStops(host.Current()));
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::dragStopsAtItsNeighbours_data()
{
    QTest::addColumn<int>("node");
    QTest::addColumn<int>("to");
    QTest::addColumn<double>("kept");

    QTest::newRow("first, far right") << 0 << 395 << 0.3;
    QTest::newRow("first, off the strip") << 0 << -50 << 0.0;
    QTest::newRow("middle, far right") << 2 << 395 << 0.7;
    QTest::newRow("middle, far left") << 2 << 5 << 0.3;
    QTest::newRow("last, far left") << 4 << 5 << 0.7;
    QTest::newRow("last, off the strip") << 4 << 700 << 1.0;
}

void tst_NVGradientEditor::dragStopsAtItsNeighbours()
{
    QFETCH(const int, node);
    QFETCH(const int, to);
    QFETCH(const double, kept);
    const Host host({FiveStops()});
    QVERIFY(host.Show());

    host.Drag(node, QPoint(to, 15));

    QList<double> expected = Positions(FiveStops());
    expected[node] = kept;
    QCOMPARE(Positions(host.Current()), expected);
    QCOMPARE(host.Current()[node].GetColor(), FiveStops()[node].GetColor());
}

void tst_NVGradientEditor::stopsAtOnePlaceCannotPassOneAnother()
{
    const Host host({{Stop(0.0, Qt::red), Stop(0.5, Qt::green), Stop(0.5, Qt::yellow), Stop(1.0, Qt::blue)}});
    QVERIFY(host.Show());

    // The one that is hit first may be either of the two; it goes its way and not the other's.
    host.Drag(1, QPoint(300, 15));
    const bool wasBehind = qFuzzyCompare(host.Current()[2].GetPosition(), 0.75);
    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.5, wasBehind ? 0.75 : 0.5, 1.0}));

    host.Drag(wasBehind ? 2 : 1, QPoint(20, 15));
    QCOMPARE(host.Current()[1].GetColor(), QColor(Qt::green));
    QCOMPARE(host.Current()[2].GetColor(), QColor(Qt::yellow));
    QVERIFY(host.Current()[1].GetPosition() <= host.Current()[2].GetPosition());
    QCOMPARE(host.Current()[2].GetPosition(), 0.5);
}

void tst_NVGradientEditor::moveOfAHandleThatIsNotSelectedIsNotFollowed()
{
    const Host host;
    QVERIFY(host.Show());

    host.Nodes().at(1)->setPos(333, 3);

    QCOMPARE(host.Current(), ThreeStops());
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::arrowKeysMoveTheSelectedStop()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);

    QTest::keyClick(host.View(), Qt::Key_Right);
    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.51, 1.0}));
    QTest::keyClick(host.View(), Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.41, 1.0}));

    QTest::keyClick(host.View(), Qt::Key_Tab);
    QCOMPARE(host.Selected(), 2);
    QCOMPARE(host.Box("m_pBlue")->value(), 255);
    QTest::keyClick(host.View(), Qt::Key_Right);
    QCOMPARE(host.Current().last().GetPosition(), 1.0);
}

void tst_NVGradientEditor::doubleClickAddsAWhiteStop()
{
    const Host host;
    QVERIFY(host.Show());

    host.DoubleClick(100);

    QCOMPARE(host.Current().size(), 4);
    QCOMPARE(host.Current()[1], Stop(0.25, Qt::white));
    QCOMPARE(host.Places(), QList<double>({0, 100, 200, 400}));
    QCOMPARE(host.Nodes().at(1)->y(), 15.0);
    QCOMPARE(host.Selected(), 1);
    QCOMPARE(host.SunkenCount(), 1);
    QCOMPARE(host.ColorNumber(), QString("#ffffffff"));
    QCOMPARE(host.StripStops(), ToGradientStops(host.Current()));
    QCOMPARE(host.RowStops(0), ToGradientStops(host.Current()));
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::doubleClickLeftOfTheFirstInsertsInFront()
{
    const Host host({FiveStops()});
    QVERIFY(host.Show());

    host.DoubleClick(10);

    QCOMPARE(host.Current().first(), Stop(0.025, Qt::white));
    QCOMPARE(host.Current().size(), 6);
    QCOMPARE(host.Selected(), 0);

    QTest::keyClick(host.dialog, Qt::Key_Delete);
    Host::LetHandlesGo();
    QCOMPARE(host.Current(), FiveStops());
    QCOMPARE(host.Selected(), 0);
    QCOMPARE(host.ColorNumber(), QString("#ffff0000"));
}

void tst_NVGradientEditor::doubleClickAtTheSamePlaceGoesBehind()
{
    const Host host;
    QVERIFY(host.Show());

    host.dialog->AddStop(QPointF(200, 15));

    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.5, 0.5, 1.0}));
    QCOMPARE(host.Current()[1].GetColor(), QColor(0, 200, 0));
    QCOMPARE(host.Current()[2].GetColor(), QColor(Qt::white));

    // It is the selected one, and stays behind the other.
    QTest::mouseClick(host.Viewport(), Qt::LeftButton, {}, QPoint(200, 15));
    host.Drag(2, QPoint(20, 15));
    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.5, 0.5, 1.0}));
}

void tst_NVGradientEditor::doubleClickOnAHandleAddsNothing()
{
    const Host host;
    QVERIFY(host.Show());

    host.DoubleClick(200);

    QCOMPARE(host.Current(), ThreeStops());
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::doubleClickWithAnyButtonAdds()
{
    const Host host;
    QVERIFY(host.Show());

    host.DoubleClick(100, Qt::RightButton);

    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.25, 0.5, 1.0}));
    QCOMPARE(host.Selected(), 1);
}

void tst_NVGradientEditor::stopAddedOutsideStaysOnTheStrip()
{
    const Host host;
    QVERIFY(host.Show());

    host.dialog->AddStop(QPointF(-20, 100));
    host.dialog->AddStop(QPointF(1e9, 0));

    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.0, 0.5, 1.0, 1.0}));
    QCOMPARE(host.Current().last().GetColor(), QColor(Qt::white));

    host.dialog->SetCurrentIndex(-1);
    host.dialog->AddStop(QPointF(20, 15));
    QVERIFY(host.Nodes().isEmpty());
}

void tst_NVGradientEditor::leftClickBesideTheHandlesKeepsTheSelection()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);

    QTest::mouseClick(host.Viewport(), Qt::LeftButton, {}, QPoint(100, 15));

    QCOMPARE(host.Selected(), 1);
    QCOMPARE(host.Current(), ThreeStops());
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::rightClickBesideTheHandlesDeselects()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);

    QTest::mouseClick(host.Viewport(), Qt::RightButton, {}, QPoint(100, 15));

    QCOMPARE(host.Selected(), -1);
    QCOMPARE(host.SunkenCount(), 0);
    QCOMPARE(host.Box("m_pGreen")->value(), 200);
    host.Box("m_pGreen")->setValue(16);
    host.Box("m_pOpacity")->setValue(0);
    QCOMPARE(host.ColorNumber(), QString("#00001000"));
    QCOMPARE(host.Current(), ThreeStops());
    QTest::keyClick(host.dialog, Qt::Key_Delete);
    QCOMPARE(host.Current(), ThreeStops());
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::deleteKeySelectsTheStopBefore_data()
{
    QTest::addColumn<int>("node");
    QTest::addColumn<int>("selected");

    QTest::newRow("first") << 0 << 0;
    QTest::newRow("second") << 1 << 0;
    QTest::newRow("third") << 2 << 1;
}

void tst_NVGradientEditor::deleteKeySelectsTheStopBefore()
{
    QFETCH(const int, node);
    const Host host;
    QVERIFY(host.Show());
    host.Click(node);

    QTest::keyClick(host.View(), Qt::Key_Delete);
    Host::LetHandlesGo();

    Gradient expected = ThreeStops();
    expected.removeAt(node);
    QCOMPARE(host.Current(), expected);
    QCOMPARE(host.RowStops(0), ToGradientStops(expected));
    QCOMPARE(host.StripStops(), ToGradientStops(expected));
    QTEST(host.Selected(), "selected");
    QCOMPARE(host.SunkenCount(), 1);
    const QColor color = expected[host.Selected()].GetColor();
    QCOMPARE(host.ColorNumber(), color.name(QColor::HexArgb));
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::deleteKeyLeavesTwoStops()
{
    const Host host({TwoStops()});
    QVERIFY(host.Show());
    host.Click(1);

    QTest::keyClick(host.View(), Qt::Key_Delete);

    QCOMPARE(host.Current(), TwoStops());
    QVERIFY(!host.Button("m_pRemove")->isEnabled());
    QVERIFY(!host.Button("m_pRemoveAll")->isEnabled());
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::deleteKeyInANumberBoxDeletesADigit()
{
    const Host host;
    QVERIFY(host.Show());
    QTest::mouseClick(host.Box("m_pRed")->findChild<QLineEdit*>(), Qt::LeftButton);
    QTest::keyClick(host.Box("m_pRed"), Qt::Key_Home);

    QTest::keyClick(host.Box("m_pRed"), Qt::Key_Delete);

    QCOMPARE(host.Current().size(), 3);
    QCOMPARE(host.Current()[0].GetColor(), QColor(55, 0, 0));
}

void tst_NVGradientEditor::removeButtonDoesAsTheKey()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(2);

    QTest::mouseClick(host.Button("m_pRemove"), Qt::LeftButton);
    Host::LetHandlesGo();

    QCOMPARE(Positions(host.Current()), QList<double>({0.0, 0.5}));
    QCOMPARE(host.Selected(), 1);
    QVERIFY(!host.Button("m_pRemove")->isEnabled());
    QVERIFY(!host.Button("m_pRemoveAll")->isEnabled());
}

void tst_NVGradientEditor::removeAllKeepsFirstAndLast_data()
{
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("left");

    QTest::newRow("first") << 0 << 0;
    QTest::newRow("middle") << 2 << 0;
    QTest::newRow("last") << 4 << 1;
    QTest::newRow("none") << -1 << 0;
}

void tst_NVGradientEditor::removeAllKeepsFirstAndLast()
{
    QFETCH(const int, selected);
    const Host host({FiveStops()});
    QVERIFY(host.Show());
    if (selected < 0)
        QTest::mouseClick(host.Viewport(), Qt::RightButton, {}, QPoint(160, 15));
    else
        host.Click(selected);

    QTest::mouseClick(host.Button("m_pRemoveAll"), Qt::LeftButton);
    Host::LetHandlesGo();

    QCOMPARE(host.Current(), Gradient({FiveStops().first(), FiveStops().last()}));
    QCOMPARE(host.Places(), QList<double>({40, 360}));
    QTEST(host.Selected(), "left");
    QVERIFY(!host.Button("m_pRemove")->isEnabled());
    QVERIFY(!host.Button("m_pRemoveAll")->isEnabled());
    QVERIFY(host.IsUnsaved());

    // The selected one is the one that is coloured and dragged.
    host.Box("m_pRed")->setValue(7);
    QCOMPARE(host.Current()[host.Selected()].GetColor().red(), 7);
    host.Drag(host.Selected(), QPoint(200, 15));
    QCOMPARE(host.Current()[host.Selected()].GetPosition(), 0.5);
}

void tst_NVGradientEditor::removeButtonsNeedThreeStops()
{
    const Host host({ThreeStops(), TwoStops()});
    QVERIFY(host.Show());
    const auto enabled = [&host] {
        return QList<bool>({host.Button("m_pRemove")->isEnabled(), host.Button("m_pRemoveAll")->isEnabled()});
    };

    QCOMPARE(enabled(), QList<bool>({true, true}));
    host.dialog->SetCurrentIndex(1);
    QCOMPARE(enabled(), QList<bool>({false, false}));
    host.DoubleClick(200);
    QCOMPARE(enabled(), QList<bool>({true, true}));
    host.DoubleClick(100);
    QTest::keyClick(host.dialog, Qt::Key_Delete);
    QCOMPARE(enabled(), QList<bool>({true, true}));
    QTest::keyClick(host.dialog, Qt::Key_Delete);
    QCOMPARE(enabled(), QList<bool>({false, false}));
}

void tst_NVGradientEditor::removedHandlesGoWithTheEventLoop()
{
    const Host host({FiveStops()});
    QVERIFY(host.Show());
    host.Click(2);

    QTest::keyEvent(QTest::Press, host.dialog, Qt::Key_Delete);
    QCOMPARE(host.Current().size(), 4);
    QCOMPARE(host.Nodes().size(), 5);
    Host::LetHandlesGo();
    QCOMPARE(host.Nodes().size(), 4);
}

void tst_NVGradientEditor::resizingKeepsStopsAndSelection()
{
    const Host host({FiveStops()});
    QVERIFY(host.Show());
    host.Click(3);
    SignalLog log(host.dialog);

    host.View()->setFixedWidth(602);
    QTRY_COMPARE(host.Viewport()->width(), 600);

    QCOMPARE(host.Places(), QList<double>({60, 180, 300, 420, 540}));
    QCOMPARE(host.StripItem()->rect(), QRectF(0, 0, 600, 30));
    QCOMPARE(host.Scene()->sceneRect(), QRectF(0, 0, 600, 30));
    QCOMPARE(host.Current(), FiveStops());
    QCOMPARE(host.RowStops(0), ToGradientStops(FiveStops()));
    QCOMPARE(host.Selected(), 3);
    QVERIFY(!host.IsUnsaved());
    QCOMPARE(log.Entries(), QStringList());

    host.View()->setFixedWidth(202);
    QTRY_COMPARE(host.Places(), QList<double>({20, 60, 100, 140, 180}));
    QVERIFY(!host.IsUnsaved());

    host.Drag(3, QPoint(160, 15));
    QCOMPARE(host.Current()[3].GetPosition(), 0.8);
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::dialogMadeLargerKeepsStopsAndSelection()
{
    NVGradientEditor dialog(nullptr);
    dialog.Load({FiveStops()});
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    const auto* view = dialog.findChild<QGraphicsView*>("m_pGraphicsView");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(view->viewport()->width() * 7 / 10, 15));
    SignalLog log(&dialog);

    for (const int larger : {150, 40})
    {
        const int before = view->viewport()->width();
        dialog.resize(dialog.width() + larger, dialog.height() + larger);
        QTRY_VERIFY(view->viewport()->width() > before);

        const QList<QGraphicsItem*> selected = view->scene()->selectedItems();
        QCOMPARE(selected.size(), 1);
        QCOMPARE(selected.first()->pos(), QPointF(0.7 * view->viewport()->width(), 15));
        QCOMPARE(dialog.GetGradients(), GradientList({FiveStops()}));
        QVERIFY(!dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Apply)->isEnabled());
    }
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVGradientEditor::sceneSizeSetByTheHostCountsAsAMove()
{
    const Host host({FiveStops()});
    QVERIFY(host.Show());
    host.Click(2);

    // The handle stops at its right neighbour, which has not moved yet.
    host.dialog->UpdateSceneSize(QSize(800, 30));

    QCOMPARE(Positions(host.Current()), QList<double>({0.1, 0.3, 0.35, 0.7, 0.9}));
    QCOMPARE(host.Places(), QList<double>({80, 240, 280, 560, 720}));
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::stripKeepsItsSizeWhileNoRowIsCurrent()
{
    const Host host({ThreeStops()});
    QVERIFY(host.Show());
    host.dialog->DeleteGradient();

    host.View()->setFixedWidth(302);
    QTRY_COMPARE(host.Viewport()->width(), 300);

    QCOMPARE(host.StripItem()->rect(), QRectF(0, 0, 400, 30));
    host.dialog->NewGradient();
    QCOMPARE(host.Places(), QList<double>({0, 400}));
    host.View()->setFixedWidth(302 + 20);
    QTRY_COMPARE(host.Places(), QList<double>({0, 320}));
}

void tst_NVGradientEditor::stripOfNoWidthKeepsThePositions()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);

    host.dialog->UpdateSceneSize(QSize(0, 30));
    host.dialog->AddStop(QPointF(0, 0));

    QCOMPARE(host.Current(), ThreeStops());
    host.dialog->UpdateSceneSize(QSize(400, 30));
    QCOMPARE(Positions(host.Current()).first(), 0.0);
    for (const double position : Positions(host.Current()))
        QVERIFY(position >= 0.0 && position <= 1.0);
}

void tst_NVGradientEditor::manyEditsLeaveNoHandleOver()
{
    const Host host({ThreeStops(), TwoStops(), FiveStops()});
    QVERIFY(host.Show());
    QRandomGenerator random(4711);
    const auto nodeAt = [&] { return int(random.bounded(host.Nodes().size())); };

    for (int edit = 0; edit < 10000; ++edit)
    {
        if (host.dialog->GetGradientCount() == 0 || host.dialog->GetCurrentIndex() < 0)
            host.dialog->NewGradient();
        switch (random.bounded(9))
        {
        case 0:
        case 1:
            host.DoubleClick(int(random.bounded(StripWidth)));
            break;
        case 2:
            host.Click(nodeAt());
            break;
        case 3:
            host.Drag(nodeAt(), QPoint(int(random.bounded(StripWidth + 100)) - 50, int(random.bounded(30))));
            break;
        case 4:
            QTest::keyEvent(QTest::Click, host.dialog, Qt::Key_Delete);
            break;
        case 5:
            QTest::mouseClick(host.Viewport(), Qt::RightButton, {},
                              QPoint(int(random.bounded(StripWidth)), 15));
            break;
        case 6:
            host.dialog->SetCurrentIndex(int(random.bounded(host.dialog->GetGradientCount())));
            break;
        case 7:
            host.Box("m_pOpacity")->setValue(int(random.bounded(101)));
            break;
        default:
            if (random.bounded(20) == 0)
                host.Button("m_pRemoveAll")->click();
            else if (random.bounded(20) == 0)
                host.dialog->DeleteGradient();
            break;
        }
        Host::LetHandlesGo();

        const Gradient current = host.Current();
        QCOMPARE(host.Scene()->items().size(), current.isEmpty() ? 1 : current.size() + 1);
        const QList<double> positions = Positions(current);
        QVERIFY(std::is_sorted(positions.begin(), positions.end()));
        QVERIFY(current.isEmpty() || (positions.first() >= 0.0 && positions.last() <= 1.0));
        // The toolkit's gradient drops all but the last of several stops at one place.
        QLinearGradient drawn;
        drawn.setStops(ToGradientStops(current));
        QVERIFY(current.isEmpty() || host.StripStops() == drawn.stops());
    }

    host.dialog->Load({});
    Host::LetHandlesGo();
    QCOMPARE(host.Scene()->items().size(), 1);
}

void tst_NVGradientEditor::eventsOfOthersAreLeftAlone()
{
    const Host host;
    QVERIFY(host.Show());
    QWidget other;
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(100, 15), Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent twice(QEvent::MouseButtonDblClick, QPointF(100, 15), Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent right(QEvent::MouseButtonPress, QPointF(100, 15), Qt::RightButton, Qt::RightButton, {});

    QVERIFY(!host.dialog->eventFilter(&other, &press));
    QVERIFY(!host.dialog->eventFilter(&other, &twice));
    QCOMPARE(host.Current(), ThreeStops());
    QVERIFY(host.dialog->eventFilter(host.Viewport(), &press));
    QVERIFY(!host.dialog->eventFilter(host.Viewport(), &right));
    QVERIFY(host.dialog->eventFilter(host.Viewport(), &twice));
    QCOMPARE(host.Current().size(), 4);
}

void tst_NVGradientEditor::colorControlsWriteTheStop_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("value");
    QTest::addColumn<QColor>("color");

    QTest::newRow("red") << "m_pRed" << 17 << QColor(17, 200, 0);
    QTest::newRow("green") << "m_pGreen" << 18 << QColor(0, 18, 0);
    QTest::newRow("blue") << "m_pBlue" << 19 << QColor(0, 200, 19);
    QTest::newRow("opacity, half") << "m_pOpacity" << 50 << QColor(0, 200, 0, 127);
    QTest::newRow("opacity, one percent") << "m_pOpacity" << 1 << QColor(0, 200, 0, 2);
    QTest::newRow("opacity, none") << "m_pOpacity" << 0 << QColor(0, 200, 0, 0);
}

void tst_NVGradientEditor::colorControlsWriteTheStop()
{
    QFETCH(const QString, box);
    QFETCH(const int, value);
    QFETCH(const QColor, color);
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);
    QSignalSpy written(host.List()->model(), &QAbstractItemModel::dataChanged);

    host.Box(box.toLatin1())->setValue(value);

    QCOMPARE(host.Current()[1], Stop(0.5, color));
    QCOMPARE(host.Current().first(), ThreeStops().first());
    QCOMPARE(host.StripStops(), ToGradientStops(host.Current()));
    QCOMPARE(host.RowStops(0), ToGradientStops(host.Current()));
    QCOMPARE(host.ColorNumber(), color.name(QColor::HexArgb));
    QVERIFY(host.IsUnsaved());
    QCOMPARE(written.size(), 1);

    host.Box(box.toLatin1())->setValue(value);
    QCOMPARE(written.size(), 1);
}

void tst_NVGradientEditor::typedNumberWritesTheStopAtEachDigit()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);
    QSignalSpy written(host.List()->model(), &QAbstractItemModel::dataChanged);

    QTest::mouseClick(host.Box("m_pRed")->findChild<QLineEdit*>(), Qt::LeftButton);
    host.Box("m_pRed")->selectAll();
    QTest::keyClicks(host.Box("m_pRed"), "64");

    QCOMPARE(host.Current()[1].GetColor(), QColor(64, 200, 0));
    QCOMPARE(written.size(), 2);
}

void tst_NVGradientEditor::opacityLosesAHundredth()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);

    host.Box("m_pOpacity")->setValue(50);
    QCOMPARE(host.Current()[1].GetColor().alpha(), 127);
    QCOMPARE(host.Box("m_pOpacity")->value(), 50);

    host.Click(0);
    host.Click(1);
    QCOMPARE(host.Box("m_pOpacity")->value(), 49);
    QCOMPARE(host.Find<QSlider>("m_pEditTabOpacitySlider")->value(), 49);
    QCOMPARE(host.Current()[1].GetColor().alpha(), 127);
    // The number is that of the controls.
    QCOMPARE(host.ColorNumber(), QString("#7c00c800"));
}

void tst_NVGradientEditor::selectingAStopWritesNothing()
{
    const Host host({{Stop(0.0, QColor(1, 2, 3, 127)), Stop(0.5, Qt::white), Stop(1.0, QColor(9, 8, 7, 3))}});
    QVERIFY(host.Show());
    QSignalSpy written(host.List()->model(), &QAbstractItemModel::dataChanged);
    const Gradient before = host.Current();

    for (const int node : {2, 1, 0, 2})
        host.Click(node);

    QCOMPARE(written.size(), 0);
    QCOMPARE(host.Current(), before);
    QVERIFY(!host.IsUnsaved());
}

// The connections that are cut while controls and handles are set must be there again, and once each.
void tst_NVGradientEditor::changeIsWrittenOnceAfterManySelections()
{
    const Host host({FiveStops()});
    QVERIFY(host.Show());
    for (int turn = 0; turn < 10; ++turn)
    {
        host.Click(turn % 5);
        host.Drag(turn % 5, host.PointOf(turn % 5) + QPoint(turn % 2 ? -6 : 6, 0));
    }
    host.Click(1);
    QSignalSpy written(host.List()->model(), &QAbstractItemModel::dataChanged);

    for (const char* box : {"m_pRed", "m_pGreen", "m_pBlue", "m_pOpacity"})
    {
        written.clear();
        host.Box(box)->setValue(33);
        QCOMPARE(written.size(), 1);
    }
    written.clear();
    host.Nodes().at(1)->setPos(150, 15);
    QCOMPARE(written.size(), 1);
    QCOMPARE(host.Current()[1].GetPosition(), 0.375);
}

void tst_NVGradientEditor::flagsGoWithTheFirstEdit()
{
    const Gradient flagged{NVGradientStop(0.0, Qt::red, true, false, true), Stop(1.0, Qt::blue)};
    const Host host({flagged});
    QVERIFY(host.Show());

    host.dialog->AddGradient(flagged);
    QCOMPARE(host.Current(), flagged);

    host.Box("m_pGreen")->setValue(1);
    QCOMPARE(host.Current(), Gradient({Stop(0.0, QColor(255, 1, 0)), Stop(1.0, Qt::blue)}));
}

void tst_NVGradientEditor::opaqueRedHasItsNumber()
{
    const Host host;

    QCOMPARE(host.ColorNumber(), QString("#ffff0000"));
}

void tst_NVGradientEditor::applicationColorsAreTakenOnce_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QColor>("color");

    QTest::newRow("foreground") << QByteArray("m_pForeground") << QColor(12, 34, 56, 78);
    QTest::newRow("background") << QByteArray("m_pBackground") << QColor(98, 76, 54, 32);
}

void tst_NVGradientEditor::applicationColorsAreTakenOnce()
{
    QFETCH(const QByteArray, button);
    QFETCH(const QColor, color);
    NVApplication::GetInstance()->SetForeground(QColor(12, 34, 56, 78));
    NVApplication::GetInstance()->SetBackground(QColor(98, 76, 54, 32));
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);

    QTest::mouseClick(host.Button(button), Qt::LeftButton);

    QCOMPARE(host.Current()[1], Stop(0.5, color));
    QCOMPARE(host.Box("m_pRed")->value(), color.red());
    QCOMPARE(host.Box("m_pOpacity")->value(), color.alpha() * 100 / 255);
    QCOMPARE(host.StripStops(), ToGradientStops(host.Current()));
    QCOMPARE(host.RowStops(0), ToGradientStops(host.Current()));
    QVERIFY(host.IsUnsaved());

    NVApplication::GetInstance()->SetForeground(Qt::magenta);
    NVApplication::GetInstance()->SetBackground(Qt::magenta);
    QCOMPARE(host.Current()[1], Stop(0.5, color));
}

void tst_NVGradientEditor::customColorButtonStartsBlack()
{
    const Host host;
    const QPushButton* button = host.Button("m_pCustomColor");

    QImage picture = button->icon().pixmap(button->iconSize()).toImage();
    QCOMPARE(picture.size(), button->iconSize());
    QCOMPARE(picture.pixelColor(0, 0), QColor(Qt::black));

    host.dialog->UpdateCustomColor(QColor(10, 200, 30));
    picture = button->icon().pixmap(button->iconSize()).toImage();
    QCOMPARE(picture.pixelColor(picture.width() - 1, picture.height() - 1), QColor(10, 200, 30));
}

void tst_NVGradientEditor::customColorPreviewsInTheStripAlone()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);
    host.dialog->UpdateCustomColor(QColor(1, 2, 3));
    QStringList seen;
    ModalDriver driver(
        [&](QWidget* window)
        {
            auto* dialog = qobject_cast<KXColorDlg*>(window);
            seen << window->windowTitle() << dialog->CurrentColor().name()
                 << (dialog->parentWidget() == host.dialog ? "child" : "stranger")
                 << host.StripStops()[1].second.name();
            dialog->SetCurrentColor(QColor(250, 100, 50, 60));
            seen << host.StripStops()[1].second.name(QColor::HexArgb)
                 << host.RowStops(0)[1].second.name(QColor::HexArgb)
                 << host.Current()[1].GetColor().name(QColor::HexArgb) << host.ColorNumber()
                 << (host.IsUnsaved() ? "unsaved" : "clean");
            ModalDriver::Press(window, "Cancel");
        });

    QTest::mouseClick(host.Button("m_pCustomColor"), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(seen,
             QStringList({"Select a custom color", "#010203", "child", "#00c800", "#3cfa6432", "#ff00c800",
                          "#ff00c800", "#ff00c800", "clean"}));
}

void tst_NVGradientEditor::acceptedCustomColorIsWritten()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);
    const QColor chosen(250, 100, 50, 60);
    ModalDriver driver(
        [&](QWidget* window)
        {
            qobject_cast<KXColorDlg*>(window)->SetCurrentColor(Qt::yellow);
            qobject_cast<KXColorDlg*>(window)->SetCurrentColor(chosen);
            ModalDriver::Press(window, "OK");
        });
    QSignalSpy written(host.List()->model(), &QAbstractItemModel::dataChanged);

    QTest::mouseClick(host.Button("m_pCustomColor"), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(written.size(), 1);
    QCOMPARE(host.Current()[1], Stop(0.5, chosen));
    QCOMPARE(host.StripStops(), ToGradientStops(host.Current()));
    QCOMPARE(host.RowStops(0), ToGradientStops(host.Current()));
    QCOMPARE(host.Box("m_pRed")->value(), 250);
    QCOMPARE(host.Box("m_pOpacity")->value(), 23);
    QVERIFY(host.IsUnsaved());
    const QPushButton* button = host.Button("m_pCustomColor");
    const QColor shown = button->icon().pixmap(button->iconSize()).toImage().pixelColor(8, 8);
    QVERIFY2(ProbeImage::Similar(shown, chosen, 4), qPrintable(shown.name(QColor::HexArgb)));

    // The next choice starts from it.
    QColor start;
    ModalDriver again(
        [&](QWidget* window)
        {
            start = qobject_cast<KXColorDlg*>(window)->CurrentColor();
            ModalDriver::Press(window, "Cancel");
        });
    host.Click(2);
    QTest::mouseClick(host.Button("m_pCustomColor"), Qt::LeftButton);
    QVERIFY(again.Finished());
    QCOMPARE(start, chosen);
}

void tst_NVGradientEditor::customColorLeftUnchosenChangesNothing_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("cancel") << "cancel";
    QTest::newRow("escape") << "escape";
    QTest::newRow("close") << "close";
}

void tst_NVGradientEditor::customColorLeftUnchosenChangesNothing()
{
    QFETCH(const QString, way);
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);
    ModalDriver driver(
        [&](QWidget* window)
        {
            for (const QColor& color : {QColor(Qt::yellow), QColor(Qt::cyan)})
                qobject_cast<KXColorDlg*>(window)->SetCurrentColor(color);
            if (way == "cancel")
                ModalDriver::Press(window, "Cancel");
            else if (way == "escape")
                ModalDriver::PressKey(window, Qt::Key_Escape);
            else
                ModalDriver::CloseWindow(window);
        });

    QTest::mouseClick(host.Button("m_pCustomColor"), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(host.Current(), ThreeStops());
    QCOMPARE(host.StripStops(), ToGradientStops(ThreeStops()));
    QCOMPARE(host.RowStops(0), ToGradientStops(ThreeStops()));
    QCOMPARE(host.ColorNumber(), QString("#ff00c800"));
    QVERIFY(!host.IsUnsaved());
    const QPushButton* button = host.Button("m_pCustomColor");
    QCOMPARE(button->icon().pixmap(button->iconSize()).toImage().pixelColor(8, 8), QColor(Qt::black));
}

void tst_NVGradientEditor::customColorForAStopThatIsGoneIsDropped()
{
    const Host host;
    QVERIFY(host.Show());
    host.Click(1);
    host.dialog->UpdateCustomColor(Qt::magenta);
    ModalDriver driver(
        [&](QWidget* window)
        {
            host.dialog->SetCurrentIndex(1);
            ModalDriver::Press(window, "OK");
        });

    QTest::mouseClick(host.Button("m_pCustomColor"), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(host.dialog->GetGradients(), GradientList({ThreeStops(), TwoStops()}));
    QCOMPARE(host.StripStops(), ToGradientStops(TwoStops()));
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::colorSourcesNeedASelectedStop_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<bool>("empty");
    for (const char* button : {"m_pForeground", "m_pBackground", "m_pCustomColor"})
    {
        QTest::addRow("%s, deselected", button) << QByteArray(button) << false;
        QTest::addRow("%s, empty list", button) << QByteArray(button) << true;
    }
}

void tst_NVGradientEditor::colorSourcesNeedASelectedStop()
{
    QFETCH(const QByteArray, button);
    QFETCH(const bool, empty);
    const Host host(empty ? GradientList() : GradientList{ThreeStops()});
    QVERIFY(host.Show());
    QTest::mouseClick(host.Viewport(), Qt::RightButton, {}, QPoint(100, 15));

    QTest::mouseClick(host.Button(button), Qt::LeftButton);

    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(host.Current(), empty ? Gradient() : ThreeStops());
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::stripShowsTheGradientOverTheChecker()
{
    const QColor clear(255, 0, 0, 0);
    const Host host({{Stop(0.0, clear), Stop(0.49, clear), Stop(0.5, Qt::red), Stop(1.0, Qt::blue)}});
    QVERIFY(host.Show());
    const ProbeImage picture(host.Viewport());

    NV_VERIFY_NEAR(picture, 52, 2, QColor(Qt::white), 2);
    NV_VERIFY_NEAR(picture, 57, 2, QColor(Qt::black), 2);
    NV_VERIFY_NEAR(picture, 52, 7, QColor(Qt::black), 2);
    NV_VERIFY_NEAR(picture, 57, 7, QColor(Qt::white), 2);
    NV_VERIFY_NEAR(picture, 300, 2, QColor(127, 0, 127), 4);
    NV_VERIFY_NEAR(picture, 380, 2, QColor(25, 0, 229), 6);
}

void tst_NVGradientEditor::indicatorShowsTheColorOverTheChecker()
{
    const Host host;
    const auto* indicator = host.Find<QLabel>("COLORINDICATOR");
    QVERIFY(host.Show());
    const auto picture = [indicator] { return indicator->pixmap(Qt::ReturnByValue).toImage(); };

    host.Box("m_pRed")->setValue(200);
    QCOMPARE(indicator->size(), QSize(60, 20));
    QCOMPARE(picture().size(), QSize(60, 20));
    QCOMPARE(picture().pixelColor(30, 10), QColor(200, 0, 0));
    QCOMPARE(picture().pixelColor(0, 0).alpha(), 0); // rounded
    QCOMPARE(picture().pixelColor(30, 0), QColor(200, 0, 0));

    host.Box("m_pOpacity")->setValue(0);
    QCOMPARE(picture().pixelColor(32, 12), QColor(Qt::white));
    QCOMPARE(picture().pixelColor(37, 12), QColor(Qt::black));
    QCOMPARE(picture().pixelColor(32, 17), QColor(Qt::black));
}

void tst_NVGradientEditor::picturesAreSharpOnADenseScreen()
{
    const QByteArray child = "NORVANE_TEST_DENSE_SCREEN";
    if (qEnvironmentVariableIsSet(child))
    {
        const Host host;
        QVERIFY(host.Show());
        host.Box("m_pRed")->setValue(200);
        const auto* indicator = host.Find<QLabel>("COLORINDICATOR");
        const QPixmap picture = indicator->pixmap(Qt::ReturnByValue);
        QCOMPARE(picture.devicePixelRatioF(), 2.0);
        QCOMPARE(picture.size(), QSize(120, 40));
        QCOMPARE(picture.toImage().pixelColor(60, 20), QColor(200, 0, 0));
        return;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert(child, "1");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);

    process.start(QCoreApplication::applicationFilePath(), {"picturesAreSharpOnADenseScreen"});

    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAll().constData());
}

void tst_NVGradientEditor::applySavesOnceAndCleans()
{
    const Host host;
    QVERIFY(host.Show());
    host.Drag(1, QPoint(100, 15));
    QVERIFY(host.IsUnsaved());
    SignalLog log(host.dialog);
    bool cleanWhenTold = false;
    connect(host.dialog, &NVGradientEditor::Save, host.dialog, [&] { cleanWhenTold = !host.IsUnsaved(); });

    QTest::mouseClick(host.Button(QDialogButtonBox::Apply), Qt::LeftButton);

    QCOMPARE(log.Entries(), QStringList({"Save()"}));
    QVERIFY(cleanWhenTold);
    QVERIFY(host.dialog->isVisible());
    QTest::mouseClick(host.Button(QDialogButtonBox::Apply), Qt::LeftButton);
    QCOMPARE(log.Count("Save"), 1);
}

void tst_NVGradientEditor::okSavesOnlyWhatIsUnsaved()
{
    const Host host;
    SignalLog log(host.dialog);
    {
        ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, QDialogButtonBox::Ok); });
        QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultAccepted));
        QVERIFY(driver.Finished());
    }
    QCOMPARE(log.Count("Save"), 0);
    {
        ModalDriver driver(
            [&](QWidget* window)
            {
                host.Drag(1, QPoint(100, 15));
                ModalDriver::Press(window, QDialogButtonBox::Ok);
            });
        QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultAccepted));
        QVERIFY(driver.Finished());
    }
    QCOMPARE(log.Count("Save"), 1);
    QCOMPARE(host.Current()[1].GetPosition(), 0.25);
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::enterIsOkFromTheStart_data()
{
    QTest::addColumn<bool>("unsaved");
    QTest::newRow("as it was loaded") << false;
    QTest::newRow("with a new gradient") << true;
}

void tst_NVGradientEditor::enterIsOkFromTheStart()
{
    QFETCH(const bool, unsaved);
    const Host host;
    if (unsaved)
        host.dialog->NewGradient();
    SignalLog log(host.dialog);
    ModalDriver driver(
        [&](QWidget* window)
        {
            QCOMPARE(QApplication::focusWidget(), host.Button(QDialogButtonBox::Ok));
            ModalDriver::PressKey(window, Qt::Key_Return);
        });

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultAccepted));

    QVERIFY(driver.Finished());
    QCOMPARE(host.dialog->GetGradientCount(), unsaved ? 3 : 2);
    QCOMPARE(log.Count("Save"), unsaved ? 1 : 0);
}

void tst_NVGradientEditor::cancelUndoesNothing()
{
    const Host host;
    SignalLog log(host.dialog);
    ModalDriver driver(
        [&](QWidget* window)
        {
            host.Drag(1, QPoint(100, 15));
            ModalDriver::Press(window, QDialogButtonBox::Cancel);
        });

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultRejected));

    QVERIFY(driver.Finished());
    QCOMPARE(log.Count("Save"), 0);
    QCOMPARE(host.Current()[1].GetPosition(), 0.25);
    QVERIFY(host.IsUnsaved());
}

void tst_NVGradientEditor::restoreGoesBackToTheAppliedState()
{
    const Host host({ThreeStops(), FiveStops(), TwoStops()});
    QVERIFY(host.Show());
    const auto clickRow = [&host](int row)
    {
        const QRect place = host.List()->visualRect(host.List()->model()->index(row, 0));
        QTest::mouseClick(host.List()->viewport(), Qt::LeftButton, {}, place.center());
    };
    // Not the row that was set: the one that is current when the button is pressed counts.
    host.dialog->SetCurrentIndex(2);
    clickRow(1);
    host.Drag(1, QPoint(100, 15));
    QTest::mouseClick(host.Button(QDialogButtonBox::Apply), Qt::LeftButton);
    const GradientList applied = host.dialog->GetGradients();
    clickRow(2);
    host.DoubleClick(100);
    QTest::mouseClick(host.Button("m_pCopy"), Qt::LeftButton);
    SignalLog log(host.dialog);

    QTest::mouseClick(host.Button(QDialogButtonBox::RestoreDefaults), Qt::LeftButton);

    QCOMPARE(log.Entries(),
             QStringList({"CurrentIndexChanged(-1)", "CurrentIndexChanged(0)", "CurrentIndexChanged(1)"}));
    QCOMPARE(host.dialog->GetGradients(), applied);
    QCOMPARE(host.dialog->GetCurrentIndex(), 1);
    QCOMPARE(host.StripStops(), ToGradientStops(applied[1]));
    QVERIFY(!host.IsUnsaved());
}

void tst_NVGradientEditor::restoreGoesBackToTheRowThatWasSet()
{
    const Host host({ThreeStops(), FiveStops(), TwoStops()});
    QVERIFY(host.Show());
    host.dialog->SetCurrentIndex(2);
    for (int turn = 0; turn < 2; ++turn)
    {
        QTest::mouseClick(host.Button("m_pNew"), Qt::LeftButton);
        QCOMPARE(host.dialog->GetCurrentIndex(), 3);

        QTest::mouseClick(host.Button(QDialogButtonBox::RestoreDefaults), Qt::LeftButton);

        QCOMPARE(host.dialog->GetCurrentIndex(), 2);
        QCOMPARE(host.dialog->GetGradientCount(), 3);
    }
}

void tst_NVGradientEditor::declaredSignalsStaySilent()
{
    const Host host;
    QVERIFY(host.Show());
    SignalLog log(host.dialog);

    QTest::mouseClick(host.Button("m_pNew"), Qt::LeftButton);
    host.DoubleClick(200);
    host.Drag(1, QPoint(100, 15));
    host.Box("m_pRed")->setValue(3);
    QTest::keyClick(host.dialog, Qt::Key_Delete);
    QTest::mouseClick(host.Button("m_pDelete"), Qt::LeftButton);
    QTest::mouseClick(host.Button(QDialogButtonBox::Apply), Qt::LeftButton);

    QVERIFY(log.Count("CurrentIndexChanged") > 0);
    for (const char* silent : {"CurrentGradientChanged", "GradientDeleted", "GradientInserted",
                               "PickerEnabled", "EditorDoubleClicked"})
    {
        QVERIFY2(log.Watched().contains(silent), silent);
        QCOMPARE(log.Count(silent), 0);
    }
}

void tst_NVGradientEditor::diesInAnyState_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"unshown", "shown", "empty", "typed", "dragging", "handles waiting"})
        QTest::newRow(state) << state;
}

void tst_NVGradientEditor::diesInAnyState()
{
    QFETCH(const QString, state);
    Host host(state == "empty" ? GradientList() : GradientList{ThreeStops(), TwoStops()});
    if (state != "unshown")
        QVERIFY(host.Show());
    if (state == "typed")
    {
        QTest::mouseClick(host.Box("m_pRed")->findChild<QLineEdit*>(), Qt::LeftButton);
        QTest::keyClicks(host.Box("m_pRed"), "+1*");
    }
    if (state == "dragging")
    {
        host.Send(QEvent::MouseButtonPress, host.PointOf(1));
        host.Send(QEvent::MouseMove, QPoint(230, 15));
    }
    if (state == "handles waiting")
    {
        host.Click(1);
        QTest::keyEvent(QTest::Press, host.dialog, Qt::Key_Delete);
        host.dialog->SetCurrentIndex(1);
    }
    SignalLog log(host.dialog, SignalLog::WithDestroyed);

    delete host.dialog;
    host.dialog = nullptr;
    Host::LetHandlesGo();

    QCOMPARE(log.Entries(), QStringList({"destroyed()"}));
}

void tst_NVGradientEditor::diesWhileItRuns()
{
    Host host;
    ModalDriver driver(
        [&](QWidget*)
        {
            host.Drag(1, QPoint(100, 15));
            delete host.dialog;
            host.dialog = nullptr;
        });

    QCOMPARE(host.dialog->Exec(), int(KXDialog::ResultClosed));
    QVERIFY(driver.Finished());
}

void tst_NVGradientEditor::diesUnderItsColorDialog()
{
    Host host;
    QVERIFY(host.Show());
    host.Click(1);
    ModalDriver driver(
        [&](QWidget* window)
        {
            qobject_cast<KXColorDlg*>(window)->SetCurrentColor(Qt::yellow);
            delete host.dialog;
            host.dialog = nullptr;
        });

    host.Button("m_pCustomColor")->click();

    QVERIFY(driver.Finished());
    QVERIFY(!host.dialog);
}

NV_TEST_MAIN(tst_NVGradientEditor)

#include "tst_NVGradientEditor.moc"
