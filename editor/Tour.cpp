#include "Tour.h"

#include <QTextStream>

#include "TourGuide.h"
#include "TourTopics.h"

int RunTour(const QString& folder, const QString& picture)
{
    TourGuide guide(folder, picture);
    if (!guide.IsReady())
    {
        QTextStream(stderr) << "The folder for the pictures could not be made.\n";
        return 1;
    }
    PlayStart(guide);
    void (*const topics[])(TourGuide&) = {
        PlayBrush,      PlayCanvas,    PlayEraser, PlayStamp,     PlayBlurAndDodge, PlayHealing,
        PlayFillCan,    PlaySelection, PlayWand,   PlayGradients, PlayText,         PlayCrop,
        PlayMove,       PlayMeasure,   PlayImage,  PlayPanels,    PlayNavigator,    PlayHistory,
        PlayColorRange, PlayBatch,     PlayPrint,  PlayThemes,    PlayFiles};
    if (guide.GetDocument())
    {
        for (const auto play : topics)
            play(guide);
    }
    return guide.End() ? 0 : 1;
}
