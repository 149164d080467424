#pragma once

#include <QDockWidget>

class ColorSampleModel;
class ColorSamples;
class Document;
class NVColorSamplePanel;

// The side panel of the colour samples: their places and their colours, as the picture changes. The right
// button has a menu that deletes them. It is closed until a person asks for it.
class ColorSampleDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit ColorSampleDock(QWidget* parent = nullptr);
    ~ColorSampleDock() override;

    // Not owned; null for none.
    void SetDocument(Document* document);

public Q_SLOTS:
    // The side of the square whose mean is shown.
    void SetSide(int side);

private Q_SLOTS:
    void OnMousePressed(const QPoint& globalPos, int button);
    void OnMouseReleased(const QPoint& globalPos, int button);
    void OnShowCurrent();
    void OnDelete();
    void OnDeleteAll();

private:
    ColorSampleModel* m_pModel;
    NVColorSamplePanel* m_pPanel;
};
