#pragma once

#include <QColor>

#include "KXDialog.h"
#include "gui_export.h"

class QColorDialog;

// A dialog that asks for a colour with its alpha. Opens on the colour that was set last, white at first.
//
// Exec() returns 1 on acceptance, 0 from the Cancel button, -1 when the window was closed or Escape was
// pressed.
class GUI_EXPORT KXColorDlg : public KXDialog
{
    Q_OBJECT

public:
    explicit KXColorDlg(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    KXColorDlg(const QColor& color, QWidget* parent, Qt::WindowFlags flags = Qt::WindowFlags());
    ~KXColorDlg() override;

    // The colour chooser inside. Its signal currentColorChanged(QColor) tells of every choice while the
    // dialog is open, and of SetCurrentColor(). Never null; belongs to this dialog.
    QColorDialog* GetColorDlg() const;
    // What is chosen just now.
    QColor CurrentColor() const;
    // What was chosen when the dialog was accepted last; an invalid colour before.
    QColor SelectedColor() const;

    // An invalid colour is ignored.
    void SetCurrentColor(const QColor& color);

protected:
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void OnFinished(int result);

private:
    void InitChooser();
    void InitButtons();

    QColorDialog* m_pColorDlg;
    QColor m_selectedColor;
};
