#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_RulerToolBar;

// The option bar of the ruler: where its two points lie, its length and its angle, which the host hands over
// as ready-made texts, and what can be done with it. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVRulerToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVRulerToolbar(QWidget* parent);
    ~NVRulerToolbar() override;

public Q_SLOTS:
    // Any text; a long one makes the bar wider.
    void SetX1(const QString& text);
    void SetY1(const QString& text);
    void SetX2(const QString& text);
    void SetY2(const QString& text);
    void SetLength(const QString& text);
    void SetAngle(const QString& text);
    // Both are disabled at first; the host enables them as long as there is a line.
    void SetStraightenEnabled(bool enabled);
    void SetClearEnabled(bool enabled);

Q_SIGNALS:
    void Straighten();
    void Clear();

private:
    Ui_RulerToolBar* m_pUi = nullptr;
};
