#include "Gallery.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QTextStream>
#include <QThreadPool>
#include <QVBoxLayout>

#include "GalleryExhibits.h"
#include "GalleryRequest.h"
#include "GalleryWindow.h"
#include "NVApplication.h"
#include "Theme.h"

namespace
{

// A panel has at least this size at the side of a window.
const QSize PanelSize(320, 320);

void Show(const Exhibit& exhibit, GalleryGroup group, QWidget* floor)
{
    if (!exhibit.open)
    {
        auto* layout = new QVBoxLayout(floor);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(exhibit.widget);
        QSize least = group == GalleryGroup::Panels ? PanelSize : QSize();
        if (exhibit.isRow)
            least.setHeight(0);
        floor->resize(floor->sizeHint().expandedTo(least));
        // No control is shown in use.
        floor->setFocus();
        floor->show();
    }
    exhibit.widget->show();
}

// What a widget has begun upon its showing comes to an end, be it on this thread or on another one.
void Settle()
{
    QCoreApplication::processEvents();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}

bool IsBlank(const QImage& image)
{
    if (image.isNull())
        return true;
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            if (image.pixel(x, y) != first)
                return false;
        }
    }
    return true;
}

int PrintNames()
{
    QTextStream out(stdout);
    for (const GalleryRow& row : GalleryRows())
        out << row.name << '\n';
    return 0;
}

int Render(const QString& folder)
{
    const Theme theme;
    const QStringList missing = RenderGallery(folder);
    for (const QString& name : missing)
    {
        QTextStream(stderr) << QCoreApplication::translate("Gallery", "There is no picture of %1.").arg(name)
                            << '\n';
    }
    return missing.isEmpty() ? 0 : 1;
}

int ShowWindow(const QString& name)
{
    GalleryWindow window;
    window.Choose(name);
    window.show();
    return QApplication::exec();
}

} // namespace

QPixmap TakeGalleryPicture(const GalleryRow& row)
{
    QWidget floor;
    const std::unique_ptr<Exhibit> exhibit = row.make(&floor);
    Show(*exhibit, row.group, &floor);
    Settle();
    return exhibit->widget->grab();
}

QStringList RenderGallery(const QString& folder)
{
    QDir().mkpath(folder);
    QStringList missing;
    for (const GalleryRow& row : GalleryRows())
    {
        const QString name = QLatin1String(row.name);
        const QImage image = TakeGalleryPicture(row).toImage();
        if (IsBlank(image) || !image.save(QDir(folder).filePath(name + QLatin1String(".png"))))
            missing.append(name);
    }
    return missing;
}

int RunGallery(const GalleryRequest& request)
{
    if (!request.error.isEmpty())
    {
        QTextStream(stderr) << "gallery: " << request.error << '\n';
        return 2;
    }
    if (request.list)
        return PrintNames();
    NVApplication::GetInstance()->SetTheme(request.theme);
    return request.folder.isEmpty() ? ShowWindow(request.name) : Render(request.folder);
}
