#pragma once

#include <QPixmap>

class QSize;
class QWidget;

// A transparent picture to paint on, of that size in logical pixels, in the density of the widget's screen.
// Never null.
QPixmap SharpPixmap(const QSize& size, const QWidget* widget);
