#include "GradientText.h"

namespace
{

const int MaxName = 200;

bool IsSvgStart(const QByteArray& text)
{
    const QByteArray start = text.left(1024).trimmed();
    return start.startsWith('<') || start.startsWith("\xef\xbb\xbf") || start.startsWith("\xff\xfe") ||
        start.startsWith("\xfe\xff");
}

} // namespace

QString CleanName(const QString& name)
{
    QVector<uint> clean;
    const QVector<uint> letters = name.simplified().toUcs4().mid(0, MaxName);
    for (const uint letter : letters)
    {
        const bool isBad = QChar::category(letter) == QChar::Other_Control || QChar::isNonCharacter(letter);
        clean += isBad ? '_' : letter;
    }
    return QString::fromUcs4(clean.constData(), clean.size());
}

QVector<NamedGradient> GradientText::Parse(const QByteArray& text, const QString& name, QString* reason)
{
    reason->clear();
    if (text.isEmpty())
        *reason = tr("The file is empty.");
    else if (text.startsWith("GIMP Gradient"))
        return ParseGgr(text, name, reason);
    else if (IsSvgStart(text))
        return ParseSvg(text, name, reason);
    else
        *reason = tr("It is neither a GGR nor an SVG file.");
    return {};
}
