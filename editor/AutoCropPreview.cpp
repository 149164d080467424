#include "AutoCropPreview.h"

#include <QAbstractButton>
#include <QGraphicsScene>
#include <QSpinBox>

#include "CropFrameItem.h"
#include "NVAutoCrop.h"
#include "NVDocumentView.h"

AutoCropSettings SettingsOf(const NVAutoCrop* dialog)
{
    AutoCropSettings settings;
    settings.background = AutoCropSettings::Background(dialog->GetMode());
    settings.sides = int(dialog->GetArea());
    settings.tolerance = dialog->GetTolerance();
    return settings;
}

AutoCropPreview::AutoCropPreview(NVAutoCrop* dialog, NVDocumentView* view, const QImage& picture)
    : m_pDialog(dialog),
      m_picture(picture),
      m_pScene(view->scene()),
      m_pItem(new CropFrameItem(picture.size()))
{
    m_pScene->addItem(m_pItem);
    connect(&m_work, &BackgroundWork::Done, this, &AutoCropPreview::OnSearched);
    // The dialog does not tell of changes, but its controls do.
    const QList<QAbstractButton*> buttons = dialog->findChildren<QAbstractButton*>();
    for (const QAbstractButton* button : buttons)
        connect(button, &QAbstractButton::toggled, this, &AutoCropPreview::OnChanged);
    const QList<QSpinBox*> boxes = dialog->findChildren<QSpinBox*>();
    for (const QSpinBox* box : boxes)
        connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &AutoCropPreview::OnChanged);
    OnChanged();
}

AutoCropPreview::~AutoCropPreview()
{
    if (m_pScene)
        delete m_pItem;
}

QRect AutoCropPreview::GetFrame() const
{
    return m_pScene ? m_pItem->GetFrame() : QRect();
}

bool AutoCropPreview::IsSearching() const
{
    return m_work.IsRunning();
}

void AutoCropPreview::OnChanged()
{
    m_pFound = std::make_shared<QRect>();
    m_work.Start([settings = SettingsOf(m_pDialog), picture = m_picture,
                  found = m_pFound](const std::atomic<bool>& cancelled)
                 { *found = AutoCropFrame(picture, settings, [&cancelled](int) { return !cancelled; }); });
}

void AutoCropPreview::OnSearched()
{
    if (m_pScene)
        m_pItem->SetFrame(*m_pFound);
    Q_EMIT Found();
}
