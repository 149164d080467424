#include "GradientFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "GradientText.h"

namespace
{

// More than any gradients need.
const qint64 MaxBytes = 32 * 1024 * 1024;

bool HasSuffix(const QString& path, QLatin1String suffix)
{
    return QFileInfo(path).suffix().compare(suffix, Qt::CaseInsensitive) == 0;
}

} // namespace

QVector<NamedGradient> GradientFile::Read(const QString& path, QString* error)
{
    QFile file(path);
    QString reason;
    QVector<NamedGradient> gradients;
    if (!QFileInfo::exists(path))
        reason = tr("There is no such file.");
    else if (!QFileInfo(path).isFile())
        reason = tr("It is not a plain file.");
    else if (!file.open(QIODevice::ReadOnly))
        reason = file.errorString();
    else if (file.size() > MaxBytes)
        reason = tr("It is too large to be a file of gradients.");
    else
    {
        const QByteArray text = file.readAll();
        if (file.error() != QFileDevice::NoError)
            reason = file.errorString();
        else
            gradients = GradientText::Parse(text, QFileInfo(path).completeBaseName(), &reason);
    }
    *error = reason.isEmpty()
        ? QString()
        : tr("\"%1\" could not be read as a gradient.\n\n%2").arg(QDir::toNativeSeparators(path), reason);
    return gradients;
}

bool GradientFile::Write(const QString& path, const QVector<NamedGradient>& gradients, QString* error)
{
    QString reason;
    QSaveFile file(path);
    const bool isGgr = HasSuffix(path, QLatin1String("ggr"));
    if (!isGgr && !HasSuffix(path, QLatin1String("svg")))
        reason = tr("The name must end in .ggr or .svg.");
    else if (gradients.isEmpty())
        reason = tr("There is no gradient to write.");
    else if (!file.open(QIODevice::WriteOnly))
        reason = file.errorString();
    else
    {
        const QByteArray text =
            isGgr ? GradientText::ToGgr(gradients.constFirst()) : GradientText::ToSvg(gradients);
        if (file.write(text) != text.size() || !file.commit())
            reason = file.errorString();
    }
    *error = reason.isEmpty()
        ? QString()
        : tr("\"%1\" could not be written.\n\n%2").arg(QDir::toNativeSeparators(path), reason);
    return reason.isEmpty();
}

QString GradientFile::ReadFilter()
{
    return tr("Gradients (*.ggr *.svg);;All files (*)");
}

QString GradientFile::WriteFilter()
{
    return tr("SVG gradients, all of them (*.svg);;GGR gradient, the current one (*.ggr)");
}
