#pragma once

#include "Tool.h"

class NVRedEyeToolbar;
class QSettings;

// A click on a pupil takes the red of a flash out of it.
class RedEyeTool : public Tool
{
    Q_OBJECT

public:
    // The level comes from the settings and goes there. Not owned; they outlive the tool.
    RedEyeTool(QSettings* settings, QObject* parent);

    NVRedEyeToolbar* GetRedEyeBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnLevelEntered();

private:
    QSettings* m_pSettings;
};
