#pragma once

#include "KXDialog.h"

class NVSpinBox;
class QColor;
class QComboBox;

// Asks for the size and the ground of a new document.
class NewDocumentDialog : public KXDialog
{
    Q_OBJECT

public:
    explicit NewDocumentDialog(QWidget* parent = nullptr);

    // Pixels.
    QSize GetSize() const;
    // White, the background colour, or transparent.
    QColor GetFill() const;

private:
    NVSpinBox* AddSizeBox(const QString& name);

    NVSpinBox* m_pWidth;
    NVSpinBox* m_pHeight;
    QComboBox* m_pFill;
};
