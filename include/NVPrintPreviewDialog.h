#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRectF>
#include <QTransform>

#include <array>

#include "KXDialog.h"
#include "generaltoolsgui_export.h"

class QByteArray;
class QDataStream;
class QDoubleSpinBox;
class QPrintPreviewWidget;
class QString;
class Ui_PrintPreview;
struct PrintLayout;

// The dialog for printing: printer, page, margins, scale and place of a picture, with a live preview.
//
// "Print" hands the picture to a thread of its own. Meanwhile the dialog is disabled; it closes as accepted
// when the thread is done, whether or not the printer took the job, and stays disabled: each print needs a
// dialog of its own. Lists of pages and resolutions are those of the chosen printer. The preview stands on a
// printer object of its own, so the choice of a printer shows in it only through these lists.
class GENERALTOOLSGUI_EXPORT NVPrintPreviewDialog : public KXDialog
{
    Q_OBJECT

public:
    // The unit of all lengths in the dialog: the row of its list.
    enum Unit : int
    {
        Millimeter,
        Point,
        Inch,
        Pica
    };

    explicit NVPrintPreviewDialog(QWidget* parent);
    ~NVPrintPreviewDialog() override;

    // How many printers there are. It asks the print server, and waits if that doesn't answer.
    static int GetPrintersCount();

    // The row of the list of rotations: none, auto, 90 ° clockwise, 90 ° counter-clockwise, 180 °.
    int GetCurrentAngle() const;

    // The whole sheet, in pixels of the printer; so are the others.
    QRectF GetPageRect() const;
    // The sheet within its margins, beyond it where a margin is below 0. All zero if the margins leave no
    // room.
    QRectF GetClipRect() const;
    // The part of GetClipRect() that is on the sheet.
    QRectF GetPageClipRect() const;
    // Top left corner of a picture that is as large as `rect` on the page.
    QPointF GetAlignmentOffset(const QRectF& rect) const;
    // From pixels of the picture to those of the printer, with the origin at the corner of the sheet.
    QTransform CalcAffineTransformation() const;

    // The picture to print. 32-bit formats without alpha, or premultiplied, print fastest.
    void SetSource(const QImage& image);

    // Page, unit, resolution, orientation, margins, scale and place as bytes for the host to store. Printer,
    // colour, copies and the zoom of the preview are not among them.
    QByteArray SaveSettings() const;
    // Takes over what SaveSettings() gave. Bytes of another version, and none at all, change nothing; bytes
    // that end early read as zeros from there. A page and a resolution that the printer lacks are left out,
    // and so is the choice of a scale mode other than "Don't scale".
    void RestoreSettings(const QByteArray& bytes);

Q_SIGNALS:
    // The preview is drawn anew.
    void UpdatePreview();

private Q_SLOTS:
    void OnPrinter(const QString& name);
    void OnPage(int row);
    void OnUnits(int row);
    void OnDPI(int row);
    void OnOrientation(int row);
    void OnPageWidth(double width);
    void OnPageHeight(double height);
    void OnMargin(double value);
    void OnColor(bool checked);
    void OnPaintRequest(QPrinter* printer);
    void OnPreview();
    void OnAlignment(int state);
    void OnRotate(int row);
    void OnOffset(double value);
    void OnDontScale(bool checked);
    void OnFitToPage(bool checked);
    void OnCustomScale(bool checked);
    void OnKeepRatio(bool checked);
    void OnKeepScale(bool checked);
    void OnScaleX(double percent);
    void OnScaleY(double percent);
    void OnZoomIn();
    void OnZoomOut();
    void OnViewportScale(double percent);
    void OnViewportScale(int slider);
    void OnActualSize();
    void OnFitInView();
    void OnPrint();
    void OnPrintFinished();

private:
    void InitPreview();
    void ConnectPage();
    void ConnectPlace();
    void ConnectScale();
    void ConnectZoom();

    QPrintPreviewWidget* Preview() const;
    void ChooseCache();
    std::array<QDoubleSpinBox*, 4> Margins() const;
    PrintLayout Layout() const;
    int CurrentPageId() const;
    QPageSize PageOf(int id) const;
    void SetPageMaxima(int id);
    void SetCustomPage(const QSizeF& size);
    void ZoomPreview(double factor);
    void RestorePage(QDataStream& stream);
    void RestoreScale(QDataStream& stream);

    void UpdateDPIList(const QPrinterInfo& info);
    void UpdatePageSizeList(const QPrinterInfo& info);
    void UpdatePageLayout();
    void SetUnitsSuffix(const QString& suffix);
    void RecalculateValues(Unit from, Unit to);
    static double ConvertValue(double value, Unit from, Unit to);

    Ui_PrintPreview* m_pUi;
    // The one in which the boxes show their lengths now.
    Unit m_unit = Millimeter;
    // Of the preview. Owned.
    QPrinter* m_pPrintDevice;
    // Stands for the page "Custom". Owned.
    QPageSize* m_pCustomPageSize;
    QImage m_source;
    QFutureWatcher<void>* m_pPrintWatcher;
};

// What is printed, frozen for the thread that prints.
struct PrintJob
{
    QImage image;
    QPrinterInfo printer;
    QPageSize pageSize;
    QPrinter::Orientation orientation = QPrinter::Portrait;
    // Both as of the sheet's corner, though the job's origin is the corner of what the printer can print on.
    QTransform transform;
    QRectF clipRect;
    // Pixels an inch.
    int resolution = 0;
    // Pages of one job, each with the same picture.
    int copies = 1;
    bool color = true;
};

// Sends the job to its printer. Safe in any thread. Nothing is sent if the clip rectangle is empty, and
// nothing is reported.
GENERALTOOLSGUI_EXPORT void Print(const PrintJob& job);
// The same on a printer of the caller's, which is set up for the job.
GENERALTOOLSGUI_EXPORT void PrintPages(QPrinter& printer, const PrintJob& job);

// The sheet of a printer, without margins, in millimetres.
GENERALTOOLSGUI_EXPORT QPageLayout GetPageLayout(const QPrinter& printer);

// Millimetres for what is no unit.
GENERALTOOLSGUI_EXPORT QPageSize::Unit ToPageSizeUnits(NVPrintPreviewDialog::Unit unit);
GENERALTOOLSGUI_EXPORT QPageLayout::Unit ToPageLayoutUnits(NVPrintPreviewDialog::Unit unit);
GENERALTOOLSGUI_EXPORT QPrinter::Unit ToPrinterUnits(NVPrintPreviewDialog::Unit unit);
