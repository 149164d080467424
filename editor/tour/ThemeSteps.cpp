// The three themes, chosen in the menu by its keys.

#include <QApplication>
#include <QPushButton>

#include "BrushTool.h"
#include "KXBrushSettings.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "PatternSelectWidget.h"
#include "TourGuide.h"
#include "TourTopics.h"

namespace
{

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

// Every bar, and the two kinds of popup.
void ShowBars(TourGuide& guide, const QString& theme)
{
    const char* const tools[] = {"Crop",        "Colour Picker", "Colour Sampler", "Ruler", "Eraser",
                                 "Clone Stamp", "Spot Healing",  "Blur",           "Dodge", "Red Eye",
                                 "Fill",        "Gradient",      "Hand",           "Zoom",  "Brush"};
    for (const char* tool : tools)
    {
        guide.ChooseTool(tool);
        const QString name = QString::fromLatin1(tool).toLower().replace(QLatin1Char(' '), QLatin1Char('-'));
        QWidget* shown = guide.GetWindow()->GetTool()->GetBar();
        if (guide.Check(shown->isVisible(), "the bar is not to be seen"))
            guide.TakePictureOf(shown, QStringLiteral("%1-%2-bar").arg(theme, name));
    }
    const NVBrushToolbar* bar = guide.GetWindow()->GetBrushTool()->GetBrushBar();
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectBrushBtn"), bar->GetBrushes());
    guide.VisitPopup(Control<QPushButton>(bar, "m_pSelectPatternBtn"), bar->GetPatterns());
}

} // namespace

void PlayThemes(TourGuide& guide)
{
    guide.Step("dark-theme", "The dark theme, chosen in the menu",
               [](TourGuide& it) { ChooseTheme(it, 1, Qt::Key_D); });
    guide.Step("dark-bars", "All bars in the dark theme",
               [](TourGuide& it) { ShowBars(it, QStringLiteral("dark")); });
    guide.Step("high-contrast", "The high-contrast theme",
               [](TourGuide& it) { ChooseTheme(it, 2, Qt::Key_H); });
    guide.Step("contrast-bars", "All bars in the high-contrast theme",
               [](TourGuide& it) { ShowBars(it, QStringLiteral("contrast")); });
    guide.Step("light-theme", "Back in the light theme",
               [](TourGuide& it) { ChooseTheme(it, 0, Qt::Key_L); });
}
