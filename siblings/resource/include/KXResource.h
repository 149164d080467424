#pragma once

#include "resource_export.h"

// The application's pictures. They are reached by names in the "theme:" scheme ("theme:eraser.png"), which
// resolve to the drawings of the theme in use, each at 1x, "@2x" and "@3x".
class RESOURCE_EXPORT KXResource
{
public:
    enum Theme
    {
        LightTheme = 0,
        DarkTheme = 1,
        HighContrastTheme = 2
    };

    // Makes "theme:" names resolve to the pictures of the theme. Pictures that are loaded already stay as
    // they are: whoever holds one loads it again. An unknown number is taken as LightTheme. GUI thread.
    static void UseTheme(int theme);
};
