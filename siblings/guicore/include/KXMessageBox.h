#pragma once

#include "KXDialog.h"

class QAbstractButton;
class QDialogButtonBox;
class QLabel;

// A dialog that tells something and asks for one of a few answers. Exec() returns the StandardButton that was
// pressed, or ResultClosed.
class GUICORE_EXPORT KXMessageBox : public KXDialog
{
    Q_OBJECT

public:
    enum Icon
    {
        NoIcon = 0,
        Error = 1,
        Warning = 2,
        Information = 3,
        Question = 4
    };
    Q_ENUM(Icon)

    // The values are those of QDialogButtonBox.
    enum StandardButton
    {
        NoButton = 0x00000000,
        Ok = 0x00000400,
        Save = 0x00000800,
        SaveAll = 0x00001000,
        Open = 0x00002000,
        Yes = 0x00004000,
        YesToAll = 0x00008000,
        No = 0x00010000,
        NoToAll = 0x00020000,
        Abort = 0x00040000,
        Retry = 0x00080000,
        Ignore = 0x00100000,
        Close = 0x00200000,
        Cancel = 0x00400000,
        Discard = 0x00800000,
        Help = 0x01000000,
        Apply = 0x02000000,
        Reset = 0x04000000
    };
    Q_ENUM(StandardButton)

    explicit KXMessageBox(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~KXMessageBox() override;

    QString GetText() const;
    Icon GetIcon() const;
    // NoButton if none was set.
    StandardButton GetDefaultButton() const;

    // A button that is there already, NoButton, and what is no button are ignored.
    void AddButton(StandardButton button);
    // Says more of what the button does than its own text; an "&" stands before its key. Ignored for a button
    // that was not added.
    void SetButtonText(StandardButton button, const QString& text);
    // The button that Enter presses and that has the focus at first. Ignored for a button that was not added.
    void SetDefaultButton(StandardButton button);
    void SetIcon(Icon icon);
    // Plain text, which a person can select and copy; line breaks are kept, long lines wrapped.
    void SetText(const QString& text);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private Q_SLOTS:
    void OnClicked(QAbstractButton* button);

private:
    void UpdateIcon();

    Icon m_icon = NoIcon;
    QLabel* m_pIconLabel;
    QLabel* m_pTextLabel;
    QDialogButtonBox* m_pButtonBox;
};
