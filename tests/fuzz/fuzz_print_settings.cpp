// Any bytes as settings of the print dialog: it must neither crash nor hang, all boxes stay within their
// limits, and what comes of it can be computed, saved and taken back.

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPrintPreviewWidget>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "NVPrintPreviewDialog.h"

namespace
{

void require(bool fact, const char* what)
{
    if (fact)
        return;
    qCritical("%s", what);
    std::abort();
}

std::unique_ptr<NVPrintPreviewDialog> Made()
{
    auto dialog = std::make_unique<NVPrintPreviewDialog>(nullptr);
    for (const int resolution : {150, 300})
        dialog->findChild<QComboBox*>("m_pDPI")->addItem(QString::number(resolution), resolution);
    auto* pages = dialog->findChild<QComboBox*>("m_pPageSize");
    for (const int id : {int(QPageSize::A4), int(QPageSize::A5), int(QPageSize::Custom)})
        pages->addItem(QString::number(id), id);
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    dialog->SetSource(image);
    // One picture of the page for each input is enough: a record draws about fifteen.
    QObject::disconnect(dialog.get(), &NVPrintPreviewDialog::UpdatePreview, nullptr, nullptr);
    return dialog;
}

void check(const NVPrintPreviewDialog& dialog)
{
    const QList<QDoubleSpinBox*> boxes = dialog.findChildren<QDoubleSpinBox*>();
    for (const QDoubleSpinBox* box : boxes)
        require(std::isfinite(box->value()) && box->value() >= box->minimum() &&
                    box->value() <= box->maximum(),
                "a box is beyond its limits");
    const QTransform transform = dialog.CalcAffineTransformation();
    require(std::isfinite(transform.m11()) && std::isfinite(transform.m12()) &&
                std::isfinite(transform.m21()) && std::isfinite(transform.m22()) &&
                std::isfinite(transform.dx()) && std::isfinite(transform.dy()),
            "the transformation holds what is no number");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
    static QApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::unique_ptr<NVPrintPreviewDialog> dialog = Made();
    static const QByteArray fresh = dialog->SaveSettings();
    dialog->RestoreSettings(fresh);
    dialog->RestoreSettings(QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size)));
    check(*dialog);
    dialog->findChild<QPrintPreviewWidget*>()->updatePreview();
    dialog->RestoreSettings(dialog->SaveSettings());
    check(*dialog);
    // What was put off is piled up else.
    QCoreApplication::processEvents();
    return 0;
}
