#include "PictureContents.h"

#include <algorithm>

QImage WithoutEmptySelection(const QImage& selection)
{
    for (int y = 0; y < selection.height(); ++y)
    {
        const uchar* line = selection.constScanLine(y);
        if (std::any_of(line, line + selection.width(), [](uchar value) { return value > 0; }))
            return selection;
    }
    return QImage();
}
