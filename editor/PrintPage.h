#pragma once

#include <QByteArray>
#include <QImage>
#include <QPageLayout>
#include <QString>

#include "PrintLayout.h"

struct FileProgress;

// Free of widgets and of printers: what a stored record of print settings says, and pages written to a file.
// Every function is thread-safe.

// The picture as it prints fastest: without alpha where all of it is opaque, else as it is. Premultiplied in,
// null if memory is short.
QImage PrintablePicture(const QImage& picture);

// The page that the bytes of NVPrintPreviewDialog::SaveSettings() stand for. What they lack or cannot mean,
// and everything if they are of another version, is that of an A4 sheet with margins of 10 mm, 300 pixels an
// inch and the picture fitted into it, turned if that suits it better. The minima are those of the dialog.
PrintLayout ReadPrintSettings(const QByteArray& bytes);

// What is printed, for a person: the paper, how large the picture is on it in the unit of the settings, and
// how many of its pixels fall on an inch.
struct PrintedPicture
{
    // Of the paper.
    QString paper;
    // From pixels of the picture to those of the page.
    QTransform transform;
    QSizeF picture;
    // Of the page, in pixels an inch.
    int resolution = 0;
    QPageLayout::Unit unit = QPageLayout::Millimeter;
};
QString PrintSummary(const PrintedPicture& printed);
// Of what WritePdf() writes.
QString PdfSummary(const PrintLayout& layout, const QSize& picture);

// Writes a PDF of one page, with the picture where the preview of the dialog shows it. Why it was not written
// is returned; empty after success and after a cancel. The old file stays as it was until the new one is
// complete, and for good if that fails. The progress may be null.
QString WritePdf(const QImage& picture, const PrintLayout& layout, const QString& path,
                 FileProgress* progress);
