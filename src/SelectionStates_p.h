#pragma once

#include <QAbstractButton>

// The four buttons replace, unite, subtract, intersect of a selection bar, and the flags that override the
// choice for as long as they are held. Stated here once for all such bars. A bar keeps the chosen state in
// m_State and the flags in m_Modifiers, has an enumeration KeyModifier and the four slots of its own, and
// names this class its friend; its operations forward here.
template <class Bar>
class SelectionStates
{
public:
    enum State
    {
        None,
        Replace,
        Unite,
        Subtract,
        Intersect
    };

    // The first checked button's.
    static int Checked(const Bar& bar)
    {
        for (int state = Replace; state <= Intersect; ++state)
        {
            if (button(bar, state)->isChecked())
                return state;
        }
        return None;
    }

    static int Effective(const Bar& bar)
    {
        switch (int(bar.m_Modifiers))
        {
        case Bar::UniteModifier:
            return Unite;
        case Bar::SubtractModifier:
            return Subtract;
        case Bar::UniteModifier | Bar::SubtractModifier:
            return Intersect;
        default:
            return bar.m_State;
        }
    }

    static void ConnectButtons(Bar& bar)
    {
        for (int state = Replace; state <= Intersect; ++state)
            QObject::connect(button(bar, state), &QAbstractButton::toggled, &bar, handler(state));
    }

    // A button was toggled.
    static void Choose(Bar& bar, bool checked, int state)
    {
        if (!checked)
            return;
        const int before = Effective(bar);
        bar.m_State = state;
        tellChange(bar, before);
    }

    static void SetState(Bar& bar, int state)
    {
        if (state == bar.m_State || state < None || state > Intersect)
            return;
        light(bar, state);
        if (state != None)
            return;
        bar.m_State = None;
        // Without a look at the state before, on purpose: under a modifier its own state is told again.
        Q_EMIT bar.StateChanged(Effective(bar));
    }

    // The chosen state stays, and is lit again when the flags go.
    static void SetModifiers(Bar& bar, QFlags<typename Bar::KeyModifier> flags)
    {
        if (flags == bar.m_Modifiers)
            return;
        const int before = Effective(bar);
        bar.m_Modifiers = flags;
        disconnectButtons(bar);
        light(bar, Effective(bar));
        ConnectButtons(bar);
        tellChange(bar, before);
    }

private:
    using Handler = void (Bar::*)(bool);

    static QAbstractButton* button(const Bar& bar, int state)
    {
        QAbstractButton* const buttons[] = {bar.m_pUi->m_pReplace, bar.m_pUi->m_pUnite,
                                            bar.m_pUi->m_pSubtract, bar.m_pUi->m_pIntersect};
        return buttons[state - Replace];
    }

    static Handler handler(int state)
    {
        const Handler handlers[] = {&Bar::OnReplace, &Bar::OnUnite, &Bar::OnSubract, &Bar::OnIntersect};
        return handlers[state - Replace];
    }

    static void disconnectButtons(Bar& bar)
    {
        for (int state = Replace; state <= Intersect; ++state)
            QObject::disconnect(button(bar, state), &QAbstractButton::toggled, &bar, handler(state));
    }

    // The buttons exclude each other, so the lit one goes out only when another is lit: with none it stays
    // lit.
    static void light(Bar& bar, int state)
    {
        for (int other = Replace; other <= Intersect; ++other)
        {
            if (other != state)
                button(bar, other)->setChecked(false);
        }
        if (state != None)
            button(bar, state)->setChecked(true);
    }

    static void tellChange(Bar& bar, int before)
    {
        const int state = Effective(bar);
        if (state != before)
            Q_EMIT bar.StateChanged(state);
    }
};
