#pragma once

#include <QVariant>

#include "resource_export.h"

// The application's pictures and style sheets. Pictures are reached by names in the "theme:" scheme
// ("theme:eraser.png"), which resolve to the drawings of the theme in use, each at 1x, "@2x" and "@3x"; style
// sheets by their role.
class RESOURCE_EXPORT KXResource
{
public:
    enum Theme
    {
        LightTheme = 0,
        DarkTheme = 1,
        HighContrastTheme = 2
    };

    // What GetData() gives. "Hover" is with the pointer over the row, an undone step is one below the present
    // state.
    enum ConstRole
    {
        HistoryItemSelected = 54,
        HistoryItemSelectedHover = 55,
        HistoryItem = 56,
        HistoryItemHover = 57,
        HistoryItemUndone = 58,
        HistoryItemUndoneHover = 59
    };

    // Makes "theme:" names resolve to the pictures of the theme, and roles to its style sheets. What is
    // loaded already stays as it is: whoever holds it asks again. An unknown number is taken as LightTheme.
    // GUI thread.
    static void UseTheme(int theme);

    // The style sheet of the role as text, which all who ask share; an invalid value for an unknown role, or
    // if the folders of the "theme:" scheme have no such sheet. GUI thread.
    static QVariant GetData(ConstRole role);
};
