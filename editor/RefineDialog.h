#pragma once

#include <QImage>

#include <memory>

#include "BackgroundWork.h"
#include "KXDialog.h"

class NVSpinBox;
class QFormLayout;
class QLabel;
class QPushButton;
class SelectionOutline;

// Asks how to refine a selection: smooth, grow, shrink and feather it, in pixels. The line on the canvas
// shows what comes of it; it is worked out on another thread. When the dialog goes, the line is that of the
// selection again.
class RefineDialog : public KXDialog
{
    Q_OBJECT

public:
    // The largest number of each box.
    static const int MaxSmooth;
    static const int MaxGrowth;
    static const int MaxFeather;

    // The mask is that of the document and not null. The outline is not owned; it may be null and may go.
    RefineDialog(const QImage& mask, SelectionOutline* outline, QWidget* parent = nullptr);
    ~RefineDialog() override;

    // The refined mask; null when nothing would be left.
    QImage GetMask() const;
    bool IsWorking() const;

Q_SIGNALS:
    // The mask is what the boxes say.
    void Refined();

private Q_SLOTS:
    void OnChanged();
    void OnRefined();
    void OnLasts();
    // Waits for the work.
    void OnOk();

private:
    NVSpinBox* AddBox(QFormLayout* form, const QString& label, const QString& name, int maximum);
    void ShowNote(const QString& text);

    QImage m_mask;
    QPointer<SelectionOutline> m_pOutline;
    QImage m_refined;
    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<QImage> m_pOutcome;
    bool m_isAccepted = false;

    NVSpinBox* m_pSmooth;
    NVSpinBox* m_pGrow;
    NVSpinBox* m_pShrink;
    NVSpinBox* m_pFeather;
    QLabel* m_pNote;
    QPushButton* m_pOk;
};
