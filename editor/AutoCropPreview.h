#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QRect>

#include <memory>

#include "AutoCropFrame.h"
#include "BackgroundWork.h"

class CropFrameItem;
class NVAutoCrop;
class NVDocumentView;
class QGraphicsScene;

// What the dialog says, for the search.
AutoCropSettings SettingsOf(const NVAutoCrop* dialog);

// Shows on the canvas what a dialog would leave of the picture, and follows the dialog's controls. The search
// runs on another thread; the frame of before stays until it is done.
class AutoCropPreview : public QObject
{
    Q_OBJECT

public:
    // The picture is that of the view. Neither is owned; the dialog outlives this, the view may go.
    AutoCropPreview(NVAutoCrop* dialog, NVDocumentView* view, const QImage& picture);
    // The frame goes.
    ~AutoCropPreview() override;

    // That is shown; null while there is none.
    QRect GetFrame() const;
    bool IsSearching() const;

Q_SIGNALS:
    // The search for the frame is done.
    void Found();

private Q_SLOTS:
    void OnChanged();
    void OnSearched();

private:
    NVAutoCrop* m_pDialog;
    const QImage m_picture;
    QPointer<QGraphicsScene> m_pScene;
    // The scene takes it along when it goes.
    CropFrameItem* m_pItem;
    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<QRect> m_pFound;
};
