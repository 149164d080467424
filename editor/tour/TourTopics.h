#pragma once

class TourGuide;

// The topics of the tour, in the order in which they are played. Each plays its steps and leaves the brush
// chosen and the person's picture, or the drawn one, in front.

// Shows the window and opens the picture; the other topics need one.
void PlayStart(TourGuide& guide);
void PlayBrush(TourGuide& guide);
void PlayCanvas(TourGuide& guide);
// The tools play on drawn pictures of their own, of which it is known what is to come out.
void PlayEraser(TourGuide& guide);
void PlayStamp(TourGuide& guide);
void PlayBlurAndDodge(TourGuide& guide);
void PlayHealing(TourGuide& guide);
void PlayFillCan(TourGuide& guide);
void PlaySelection(TourGuide& guide);
void PlayWand(TourGuide& guide);
void PlayGradients(TourGuide& guide);
void PlayText(TourGuide& guide);
void PlayCrop(TourGuide& guide);
void PlayMeasure(TourGuide& guide);
void PlayMove(TourGuide& guide);
void PlayImage(TourGuide& guide);
void PlayPanels(TourGuide& guide);
void PlayNavigator(TourGuide& guide);
void PlayHistory(TourGuide& guide);
void PlayColorRange(TourGuide& guide);
void PlayBatch(TourGuide& guide);
void PlayPrint(TourGuide& guide);
void PlayThemes(TourGuide& guide);
// Last: closes what is open.
void PlayFiles(TourGuide& guide);
