#pragma once

#include <QCoreApplication>
#include <QGradientStops>
#include <QString>
#include <QVector>

// A gradient with the name that its file gives it.
struct NamedGradient
{
    QString name;
    // At least two, ascending, within 0 to 1.
    QGradientStops stops;
};

// Gradients from and to files: GGR, which holds one gradient of segments, and SVG, which holds any number.
class GradientFile
{
    Q_DECLARE_TR_FUNCTIONS(GradientFile)

public:
    // Reads all gradients of the file, whose kind is told by its contents. When there is none to be had, the
    // list is empty and the error says why, in words for a person that name the file. Segments of a GGR
    // file that are curved, or run through hues, become as many stops as it takes to look the same.
    static QVector<NamedGradient> Read(const QString& path, QString* error);
    // By the suffix of the path: "ggr" takes the first gradient alone, "svg" all. The file is replaced only
    // when all was written. False, with the error, otherwise.
    static bool Write(const QString& path, const QVector<NamedGradient>& gradients, QString* error);
    // For file dialogs.
    static QString ReadFilter();
    static QString WriteFilter();
};
