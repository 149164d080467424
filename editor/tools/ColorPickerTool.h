#pragma once

#include <QColor>

#include "Tool.h"

class KXDocumentInterface;
class NVColorPickerToolbar;
class QSettings;

// Shows the colour under the pointer. A click, and a drag for as long as it lasts, makes it the foreground
// colour, with Alt the background colour.
class ColorPickerTool : public Tool
{
    Q_OBJECT

public:
    // The bar's values come from the settings and go there. Not owned; they outlive the tool.
    ColorPickerTool(QSettings* settings, QObject* parent);

    NVColorPickerToolbar* GetPickerBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    // Brings the colour back that was there before the press.
    bool Cancel() override;
    void Finish() override;

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CanvasChanged() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    void PointerLeft() override;

private Q_SLOTS:
    // The picture or the options are others than when the pointer was moved.
    void OnReadAgain();

private:
    QColor ColorAt(const QPoint& pixel);
    void ShowPixel();
    void Pick();
    void SetColor(const QColor& color);

    QSettings* m_pSettings;
    QPointer<KXDocumentInterface> m_pPixels;
    // Of the document, where the pointer is.
    QPoint m_pixel;
    bool m_isOver = false;
    bool m_isPicking = false;
    bool m_isBackground = false;
    QColor m_before;
};
