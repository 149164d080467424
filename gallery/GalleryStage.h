#pragma once

#include <QScrollArea>

class QPushButton;
class QSplitter;
class QVBoxLayout;
struct Exhibit;
enum class GalleryGroup;

// Where the chosen widget stands: a bar above, a panel at the side with its companion beside it, and a button
// for what opens as a window.
class GalleryStage : public QScrollArea
{
    Q_OBJECT

public:
    explicit GalleryStage(QWidget* parent = nullptr);
    ~GalleryStage() override;

    // The parent of the widgets that are shown here.
    QWidget* GetFloor() const;
    // Below the button: where a popup opens.
    QPoint GetOpeningPlace() const;

    // What was shown before must be gone.
    void Show(const Exhibit& exhibit, GalleryGroup group);

Q_SIGNALS:
    void OpenRequested();

private:
    void ShowBar(QWidget* bar);
    void ShowPanel(QWidget* panel, QWidget* companion);

    QVBoxLayout* m_pLayout;
    QSplitter* m_pPanels;
    // Keeps a panel that has no companion from taking the whole width.
    QWidget* m_pRest;
    QPushButton* m_pOpen;
};
