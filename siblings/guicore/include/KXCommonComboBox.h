#pragma once

#include <QComboBox>

#include "guicore_export.h"

// The combo box of bars and dialogs. A turn of the wheel changes nothing unless the box has the focus, so
// that scrolling across a bar cannot change a mode by accident. An entry that is too long for the box ends in
// dots. Enter and Escape in the open list end the list and nothing behind it.
class GUICORE_EXPORT KXCommonComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit KXCommonComboBox(QWidget* parent = nullptr);
    ~KXCommonComboBox() override;

    void showPopup() override;
    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    // A key that was held back is being handed to the list.
    bool m_answersKey = false;
};
