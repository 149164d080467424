#pragma once

#include <QComboBox>

#include "guicore_export.h"

// The combo box of bars and dialogs. A turn of the wheel changes nothing unless the box has the focus, so
// that scrolling across a bar cannot change a mode by accident. An entry that is too long for the box ends in
// dots.
class GUICORE_EXPORT KXCommonComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit KXCommonComboBox(QWidget* parent = nullptr);
    ~KXCommonComboBox() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
