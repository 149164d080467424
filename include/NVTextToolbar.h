#pragma once

#include <QColor>
#include <QWidget>

#include "NVTextDeformation.h"
#include "generaltoolsgui_export.h"

class Ui_TextToolbar;

// The option bar of the text tool: font family, style and size, anti-aliasing, colour, the dialog that bends
// the text, and the two buttons that end an edit. A slot that sets what stands already tells nothing; any
// other change is told, whether by hand or by a slot. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVTextToolbar : public QWidget
{
    Q_OBJECT

public:
    // Lists the families of the font database as it is now; the first one and the size 10 are current.
    explicit NVTextToolbar(QWidget* parent);
    ~NVTextToolbar() override;

    // Empty when there is no font at all.
    QString GetFontFamily() const;
    // What stands in the box: 0 when it is empty, and any number that SetFontSize() was given.
    int GetFontSize() const;
    // 1 bold, 2 italic, 4 underlined, added up. Nothing at first.
    int GetFontStyle() const;
    // Black at first.
    QColor GetColor() const;
    // Off at first. Has no signal; ReturnFocus() comes when a person switches it.
    bool IsAntialiasing() const;
    NVTextDeformation GetDeformation() const;

    void SetDeformation(const NVTextDeformation& deformation);

public Q_SLOTS:
    // A family that is not in the list, letter by letter, is ignored.
    void SetFontFamily(const QString& family);
    // A size that is not in the list is shown without a row of its own; out of 1 to 300 it is not told.
    void SetFontSize(int size);
    // Each button that changes tells the mask of that moment, bold first, and then the whole is told.
    void SetFontStyle(int mask);
    void SetColor(const QColor& color);
    void SetAntialiasing(bool on);
    // Both are visible at first.
    void SetCommitVisible(bool visible);
    void SetCancelVisible(bool visible);
    void SetWarpEnabled(bool enabled);

Q_SIGNALS:
    void FontFamilyChanged(const QString& family);
    // For each text of the box that is a whole number from 1 to 300, so that typing 120 tells 1, 12 and 120.
    void FontSizeChanged(int size);
    void FontStyleChanged(int mask);
    void ColorChanged(const QColor& color);
    // Never emitted.
    void AntialiasingChanged(bool on);
    // For the time being: GetDeformation() is to be shown, and is no step that can be undone. Comes while the
    // dialog is open, and when it puts the old value back.
    void DeformationCorrected();
    // For good, from the value that was told last to GetDeformation(). An accepted dialog puts the value back
    // to where it began first.
    void DeformationChanged();
    void Commit();
    void Cancel();
    // A person has used one of the controls, and the canvas may take the keys back. After an edit of the size
    // this comes before the list is put in order.
    void ReturnFocus();

private Q_SLOTS:
    void OnSizeEditFinished();
    void OnSizeTextChanged(const QString& text);
    void OnColor();
    void OnWarp();
    void OnDeformationChanged();
    void OnBold();
    void OnItalic();
    void OnUnderline();

private:
    void InitSizeEdit();
    void LoadFamilies();
    void LoadSizes();
    void ConnectSignals();
    void ConnectReturnFocus();
    void SetTextColor(const QColor& color);
    void TakeColor(const QColor& color);

    Ui_TextToolbar* m_pUi;
    NVTextDeformation m_deformation;
    QColor m_color = Qt::black;
};
