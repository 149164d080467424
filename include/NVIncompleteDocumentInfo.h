#pragma once

#include "KXDialog.h"
#include "generaltoolsgui_export.h"

class QPushButton;
class QSignalMapper;
class Ui_IncompleteDocumentInfo;

// Asks what to do when a document with layers is to be saved in a format that cannot hold them.
//
// Exec() returns what the button stands for: 1 "Save", to save without layers; 2 "Save as", to choose another
// format; 0 "Don't save", to go on without saving. Escape and the window's close button give
// KXDialog::ResultClosed, which is no answer: the host saves nothing then, and closes nothing either.
class GENERALTOOLSGUI_EXPORT NVIncompleteDocumentInfo : public KXDialog
{
    Q_OBJECT

public:
    explicit NVIncompleteDocumentInfo(QWidget* parent);
    ~NVIncompleteDocumentInfo() override;

    // Whether the person wants no such question again. The host remembers it.
    bool IsDontAsk() const;

private:
    void MapButton(QPushButton* button, int result);

    Ui_IncompleteDocumentInfo* m_pUi;
    QSignalMapper* m_pMapper;
};
