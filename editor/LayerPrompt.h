#pragma once

#include <QObject>

class QAction;
class QSettings;
class QWidget;

// The question what to do when a document of several layers is written into a file, which holds one. The
// answer may be kept in the settings, so that it is not asked again; an action switches the question off and
// on.
class LayerPrompt : public QObject
{
    Q_OBJECT

public:
    enum Answer
    {
        // Nothing is to be written, and nothing to be closed.
        NoAnswer,
        // To go on without saving.
        DontSave,
        // As one layer.
        Save,
        // Into another file.
        SaveAs
    };

    // Neither is owned; they outlive this. The question comes up over the window.
    LayerPrompt(QSettings* settings, QWidget* window);

    // Checked while the question is asked.
    QAction* GetAction() const;
    // The answer that is kept, else that of the person. Only an answer that saves is kept.
    Answer Ask();
    // Whether the last answer was not to save, and not to be asked again: that is not kept.
    bool IsAskedAgain() const;

private Q_SLOTS:
    void OnToggled(bool on);

private:
    QSettings* m_pSettings;
    QWidget* m_pWindow;
    QAction* m_pAction;
    bool m_askedAgain = false;
};
