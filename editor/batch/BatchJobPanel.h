#pragma once

#include <QWidget>

#include "BatchChange.h"
#include "OutputNames.h"

class NVSpinBox;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QSettings;

// Asks what a batch job is to do and where its results go.
class BatchJobPanel : public QWidget
{
    Q_OBJECT

public:
    // With the values of the last time. The settings are not owned and must outlive the panel.
    explicit BatchJobPanel(QSettings* settings, QWidget* parent = nullptr);

    BatchChange GetChange() const;
    // The folder is absolute and clean; empty while none was given.
    OutputRule GetRule() const;
    void SetFolder(const QString& folder);
    void StoreValues() const;

Q_SIGNALS:
    // The output folder is another one.
    void FolderChanged();

private Q_SLOTS:
    void OnResizeChanged(int resize);
    void OnChooseFolder();

private:
    void CreateResize(QFormLayout* form);
    void CreateOutput(QFormLayout* form);
    NVSpinBox* AddBox(const QString& name, int maximum, const QString& suffix);
    void RestoreValues();

    QSettings* m_pSettings;
    QComboBox* m_pResize;
    QWidget* m_pBounds;
    NVSpinBox* m_pWidth;
    NVSpinBox* m_pHeight;
    QCheckBox* m_pEnlarge;
    NVSpinBox* m_pPercent;
    QComboBox* m_pRotate;
    QComboBox* m_pFormat;
    QLineEdit* m_pFolder;
    QCheckBox* m_pKeepFolders;
};
