#pragma once

class QWidget;

// For a dialog that stands on the stack and has a parent: the parent would delete it if it died while the
// dialog runs. Instead, the dialog closes and is without a parent then.
void OutliveParent(QWidget* dialog);
