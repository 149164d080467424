// The three themes, chosen in the menu by its keys, with all bars, panels and dialogs in two of them; the
// light one is that of the other topics.

#include <QApplication>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include "BrushDock.h"
#include "BrushTool.h"
#include "ColorRangeDock.h"
#include "ColorSampleDock.h"
#include "ColorSamples.h"
#include "HistogramWidget.h"
#include "HistoryDock.h"
#include "KXAddToBatchDialog.h"
#include "KXBatchInputModel.h"
#include "KXBrushSettings.h"
#include "KXDocumentInterface.h"
#include "LoupeDock.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "NVGradientPopup.h"
#include "NVGradientToolbar.h"
#include "NVPrintPreviewDialog.h"
#include "NVTextToolbar.h"
#include "NavigatorDock.h"
#include "OptionArea.h"
#include "PatternSelectWidget.h"
#include "TextTool.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

// Wherever the tools before have zoomed and moved it.
QPoint OnCanvas(const TourGuide& guide, double x, double y)
{
    const QSize size = guide.GetView()->viewport()->size();
    return QPoint(int(x * size.width()), int(y * size.height()));
}

void ClickCanvas(TourGuide& guide, double x, double y)
{
    guide.GetRobot().Click(guide.GetView()->viewport(), OnCanvas(guide, x, y));
}

void ChooseTheme(TourGuide& guide, int theme, int key)
{
    TourRobot& robot = guide.GetRobot();
    guide.OpenMenu(Qt::Key_V);
    robot.Key(Qt::Key_T, Qt::NoModifier, QStringLiteral("t"));
    const auto isThemeMenu = []
    {
        const QWidget* menu = QApplication::activePopupWidget();
        return menu && menu->objectName() == QLatin1String("ThemeMenu");
    };
    guide.Check(robot.WaitFor(isThemeMenu), "the list of themes did not open");
    guide.TakePicture();
    guide.PressEntry(key);
    guide.Check(robot.WaitFor([theme] { return NVApplication::GetInstance()->GetTheme() == theme; }),
                "the theme was not switched");
}

// The bar as it comes, and while what a drag began is under way. Returns both, which may be the same.
QList<QWidget*> ShowBar(TourGuide& guide, Tool* tool, const QString& theme)
{
    guide.ChooseTool(tool->GetName());
    QWidget* first = Needed(tool->GetBar(), "the tool has no bar");
    const QString name =
        QStringLiteral("%1-%2-bar")
            .arg(theme, tool->GetName().toLower().replace(QLatin1Char(' '), QLatin1Char('-')));
    if (guide.Check(first->isVisible(), QStringLiteral("the bar of %1 is not to be seen").arg(name)))
        guide.TakePictureOf(first, name);
    guide.GetRobot().DragOn(
        guide.GetView()->viewport(),
        {OnCanvas(guide, 0.4, 0.4), OnCanvas(guide, 0.5, 0.5), OnCanvas(guide, 0.6, 0.5)});
    guide.Check(guide.GetRobot().WaitFor([&guide] { return !guide.GetPixels()->IsBeingEdited(); }),
                "the tool does not come to an end");
    QWidget* used = tool->GetBar();
    guide.TakePictureOf(used, name + QStringLiteral("-in-use"));
    for (int i = 0; i < 2 && tool->CanCancel(); ++i)
        guide.GetRobot().Key(Qt::Key_Escape);
    // The crop tool would begin with a frame about what is selected.
    guide.GetRobot().Key(Qt::Key_D, Qt::ControlModifier);
    return {first, used};
}

// Every bar, and the two kinds of popup.
void ShowBars(TourGuide& guide, const QString& theme)
{
    QList<QWidget*> shown;
    const QList<Tool*> tools = guide.GetWindow()->GetTools();
    for (Tool* tool : tools)
        shown += ShowBar(guide, tool, theme);
    const QList<QWidget*> bars =
        guide.Get<OptionArea>()->widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* bar : bars)
        guide.Check(shown.contains(bar), QStringLiteral("%1 is not on show").arg(bar->objectName()));
    guide.ChooseTool("Brush");
    const NVBrushToolbar* bar = guide.GetWindow()->GetBrushTool()->GetBrushBar();
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes());
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectPatternBtn"), bar->GetPatterns());
}

// Opens the panel by its key in the menu, lets the act have it, and closes it in the same way.
template <class Dock, class Act>
void VisitPanel(TourGuide& guide, int key, const Act& act)
{
    const auto toggle = [&guide, key]
    {
        guide.OpenMenu(Qt::Key_V);
        guide.PressEntry(key);
        guide.GetRobot().Settle();
    };
    toggle();
    auto* dock = guide.Find<Dock>();
    if (guide.Check(dock && dock->isVisible(), "a panel did not open"))
        act(dock);
    toggle();
}

template <class Dock>
void ShowPanel(TourGuide& guide, int key, const QString& name)
{
    VisitPanel<Dock>(guide, key, [&guide, &name](QWidget* dock) { guide.TakePictureOf(dock, name); });
}

void ShowTabs(TourGuide& guide, QWidget* dock, const QString& theme)
{
    const char* const names[] = {"overview", "loupe", "histogram"};
    auto* tabs = Control<QTabWidget>(dock, "m_pTabWidget");
    const auto* pixels = Control<QLabel>(dock, "m_pPixels");
    for (int i = 0; i < 3; ++i)
    {
        guide.GetRobot().Click(tabs->tabBar(), tabs->tabBar()->tabRect(i).center());
        const bool isHistogram = i == 2;
        guide.Check(guide.GetRobot().WaitFor([&] { return !isHistogram || pixels->text().toInt() > 0; }),
                    "no pixels were counted");
        guide.TakePictureOf(dock, QStringLiteral("%1-navigator-%2").arg(theme, QLatin1String(names[i])));
    }
    guide.GetRobot().Click(tabs->tabBar(), tabs->tabBar()->tabRect(0).center());
}

void ShowColorRange(TourGuide& guide, const QString& theme)
{
    guide.OpenMenu(Qt::Key_S);
    guide.PressEntry(Qt::Key_C);
    auto* dock = guide.Find<ColorRangeDock>();
    if (!guide.Check(dock && dock->IsOpen(), "the colour range did not open"))
        return;
    for (const double x : {0.35, 0.5, 0.65})
        ClickCanvas(guide, x, 0.4);
    guide.Check(guide.GetRobot().WaitFor([dock] { return !dock->IsComputing(); }), "no preview comes");
    guide.TakePictureOf(dock, theme + QStringLiteral("-color-range"));
    guide.GetRobot().Click(Control<QDialogButtonBox>(dock, "m_pButtonBox")->button(QDialogButtonBox::Cancel));
    guide.Check(!dock->IsOpen(), "the colour range did not close");
}

void ShowPanels(TourGuide& guide, const QString& theme)
{
    guide.GetRobot().Key(Qt::Key_0, Qt::ControlModifier);
    ShowPanel<BrushDock>(guide, Qt::Key_R, theme + QStringLiteral("-brush-panel"));
    VisitPanel<NavigatorDock>(guide, Qt::Key_N, [&](QWidget* dock) { ShowTabs(guide, dock, theme); });
    ShowPanel<HistoryDock>(guide, Qt::Key_Y, theme + QStringLiteral("-history-panel"));
    ShowPanel<LoupeDock>(guide, Qt::Key_L, theme + QStringLiteral("-zoom-panel"));
    guide.ChooseTool("Colour Sampler");
    for (const double x : {0.35, 0.5, 0.65})
        ClickCanvas(guide, x, 0.6);
    ShowPanel<ColorSampleDock>(guide, Qt::Key_S, theme + QStringLiteral("-sample-panel"));
    ShowColorRange(guide, theme);
}

// Takes a picture of the dialog that this opens, and leaves it by Escape.
void ShowDialog(TourGuide& guide, const QString& name, const std::function<void()>& open)
{
    guide.GetRobot().WhenModal(
        [&guide, name](QWidget* dialog)
        {
            guide.TakePictureOf(dialog, name);
            guide.GetRobot().Key(Qt::Key_Escape);
        });
    open();
    guide.Check(guide.GetRobot().WaitFor([&guide] { return !guide.GetRobot().IsWaitingForModal(); }),
                QStringLiteral("there is no %1").arg(name));
    guide.GetRobot().ForgetModal();
}

void ShowWarp(TourGuide& guide, const QString& name)
{
    guide.ChooseTool("Text");
    ClickCanvas(guide, 0.4, 0.5);
    guide.GetRobot().Type(QStringLiteral("fair winds"));
    auto* warp = Control<QPushButton>(guide.Find<NVTextToolbar>(), "m_pWarp");
    guide.Get<OptionArea>()->ensureWidgetVisible(warp);
    guide.GetRobot().Settle();
    ShowDialog(guide, name, [&guide, warp] { guide.GetRobot().Click(warp); });
    guide.GetRobot().Key(Qt::Key_Escape);
    guide.Check(!guide.GetWindow()->FindTool<TextTool>()->IsEditing(), "the text is still open");
}

void ShowGradientEditor(TourGuide& guide, const QString& name)
{
    guide.ChooseTool("Gradient");
    auto* popup = guide.Find<NVGradientPopup>();
    guide.VisitPopup(Control<QToolButton>(guide.Find<NVGradientToolbar>(), "m_pGradients"), popup,
                     [&name, popup](TourGuide& it)
                     {
                         ShowDialog(it, name,
                                    [&it, popup]
                                    { it.GetRobot().Click(Control<QPushButton>(popup, "m_pNew")); });
                         it.GetRobot().WaitFor([popup] { return popup->isVisible(); });
                     });
}

// The pictures of the batch window's steps are scanned once more, into a list of their own.
void ShowScan(TourGuide& guide, const QString& name)
{
    KXBatchInputModel model;
    KXAddToBatchDialog dialog(&model, guide.GetWindow());
    guide.GetRobot().WhenModal(
        [&guide, name](QWidget* shown)
        { guide.ActAmidScan(shown, [shown, &name](TourGuide& it) { it.TakePictureOf(shown, name); }); });
    dialog.AddFolders({guide.FileFor(QStringLiteral("Photographs"))});
    guide.Check(!guide.GetRobot().IsWaitingForModal(), QStringLiteral("there is no %1").arg(name));
    guide.GetRobot().ForgetModal();
}

// Without a printer there are no pages to choose, and the preview is empty.
void ShowPrint(TourGuide& guide, const QString& name)
{
    ShowDialog(guide, name,
               [&guide]
               {
                   NVPrintPreviewDialog dialog(guide.GetWindow());
                   dialog.SetSource(guide.GetComposition());
                   dialog.Exec();
               });
}

void ShowDialogs(TourGuide& guide, const QString& theme)
{
    struct Entry
    {
        const char* name;
        int key;
        Qt::KeyboardModifiers modifiers;
    };
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    const Entry entries[] = {{"new-document", Qt::Key_N, Qt::ControlModifier},
                             {"layer-prompt", Qt::Key_S, Qt::ControlModifier},
                             {"image-size", Qt::Key_I, both},
                             {"canvas-size", Qt::Key_C, both},
                             {"auto-crop", Qt::Key_T, both},
                             {"refine-selection", Qt::Key_R, both}};
    const auto nameOf = [&theme](const char* name)
    { return QStringLiteral("%1-%2").arg(theme, QLatin1String(name)); };
    guide.FocusCanvas();
    // For what is refined, and for the question about layers.
    guide.GetRobot().Key(Qt::Key_A, Qt::ControlModifier);
    guide.GetRobot().Key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    for (const Entry& entry : entries)
        ShowDialog(guide, nameOf(entry.name), [&] { guide.GetRobot().Key(entry.key, entry.modifiers); });
    ShowWarp(guide, nameOf("warp-text"));
    ShowGradientEditor(guide, nameOf("gradient-editor"));
    ShowPrint(guide, nameOf("print-preview"));
    ShowScan(guide, nameOf("batch-scan"));
    guide.FocusCanvas();
    guide.Undo();
    guide.Undo();
}

void PlayTheme(TourGuide& guide, const QString& theme)
{
    const auto name = [&theme](const char* part) { return theme.toLatin1() + '-' + part; };
    guide.Step(name("bars"), "All bars in this theme", [&theme](TourGuide& it) { ShowBars(it, theme); });
    guide.Step(name("panels"), "All panels in this theme",
               [&theme](TourGuide& it) { ShowPanels(it, theme); });
    // Without a window manager, which at times loses a key while one dialog after the other comes and goes;
    // the pictures are the same.
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        guide.Step(name("dialogs"), "All dialogs in this theme",
                   [&theme](TourGuide& it) { ShowDialogs(it, theme); });
}

} // namespace

void PlayThemes(TourGuide& guide)
{
    if (!guide.OpenDrawn(DrawBalloon().image, QStringLiteral("three themes.png")))
        return;
    guide.Step("dark-theme", "The dark theme, chosen in the menu",
               [](TourGuide& it) { ChooseTheme(it, 1, Qt::Key_D); });
    PlayTheme(guide, QStringLiteral("dark"));
    guide.Step("high-contrast", "The high-contrast theme",
               [](TourGuide& it) { ChooseTheme(it, 2, Qt::Key_H); });
    PlayTheme(guide, QStringLiteral("contrast"));
    guide.Step("light-theme", "Back in the light theme",
               [](TourGuide& it) { ChooseTheme(it, 0, Qt::Key_L); });
    guide.LeaveDrawn();
}
