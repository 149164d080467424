#include "SelectionBar.h"

#include <QToolButton>

#include "NVMagicWandToolbar.h"
#include "NVSelectionToolbar.h"
#include "Theme.h"

namespace
{

template <class Bar>
void Show(Bar* bar, Qt::KeyboardModifiers held)
{
    QFlags<typename Bar::KeyModifier> flags;
    flags.setFlag(Bar::UniteModifier, held.testFlag(Qt::ShiftModifier));
    flags.setFlag(Bar::SubtractModifier, held.testFlag(Qt::AltModifier));
    bar->SetModifiers(flags);
}

} // namespace

void ShowHeldKeys(NVSelectionToolbar* bar, Qt::KeyboardModifiers held)
{
    Show(bar, held);
}

void ShowHeldKeys(NVMagicWandToolbar* bar, Qt::KeyboardModifiers held)
{
    Show(bar, held);
}

void UpdateSelectionButtons(QWidget* bar)
{
    static const char* const pictures[][2] = {{"m_pReplace", "add_sel"},
                                              {"m_pUnite", "unite_sel"},
                                              {"m_pSubtract", "subtract_sel"},
                                              {"m_pIntersect", "intersect_sel"}};
    for (const auto& picture : pictures)
        bar->findChild<QToolButton*>(QLatin1String(picture[0]))
            ->setIcon(Theme::Icon(QLatin1String(picture[1])));
}
