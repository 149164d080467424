#include "LayerPrompt.h"

#include <QAction>
#include <QSettings>
#include <QWidget>

#include "NVIncompleteDocumentInfo.h"

namespace
{

// The answer that is kept: a number of the dialog's.
const QLatin1String AnswerKey("files/layersAnswer");

// What the dialog ends with.
const int DontSaveResult = 0;
const int SaveResult = 1;
const int SaveAsResult = 2;

LayerPrompt::Answer ToAnswer(int result)
{
    switch (result)
    {
    case DontSaveResult:
        return LayerPrompt::DontSave;
    case SaveResult:
        return LayerPrompt::Save;
    case SaveAsResult:
        return LayerPrompt::SaveAs;
    default:
        return LayerPrompt::NoAnswer;
    }
}

bool IsKept(int result)
{
    return result == SaveResult || result == SaveAsResult;
}

} // namespace

LayerPrompt::LayerPrompt(QSettings* settings, QWidget* window)
    : QObject(window),
      m_pSettings(settings),
      m_pWindow(window),
      m_pAction(new QAction(tr("As&k about Layers When Saving"), this))
{
    m_pAction->setCheckable(true);
    m_pAction->setChecked(!IsKept(settings->value(AnswerKey).toInt()));
    connect(m_pAction, &QAction::toggled, this, &LayerPrompt::OnToggled);
}

QAction* LayerPrompt::GetAction() const
{
    return m_pAction;
}

LayerPrompt::Answer LayerPrompt::Ask()
{
    m_askedAgain = false;
    const int kept = m_pSettings->value(AnswerKey).toInt();
    if (IsKept(kept))
        return ToAnswer(kept);
    NVIncompleteDocumentInfo dialog(m_pWindow);
    const int result = dialog.Exec();
    // Later saves that wrote nothing, without a word, would lose work.
    if (dialog.IsDontAsk() && IsKept(result))
    {
        m_pSettings->setValue(AnswerKey, result);
        m_pAction->setChecked(false);
    }
    m_askedAgain = dialog.IsDontAsk() && result == DontSaveResult;
    return ToAnswer(result);
}

bool LayerPrompt::IsAskedAgain() const
{
    return m_askedAgain;
}

// Switched off by hand, pictures are saved as one layer.
void LayerPrompt::OnToggled(bool on)
{
    if (on)
        m_pSettings->remove(AnswerKey);
    else if (!IsKept(m_pSettings->value(AnswerKey).toInt()))
        m_pSettings->setValue(AnswerKey, SaveResult);
}
