// Gradients as SVG: those of the document's definitions, with their stops.

#include <QHash>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cmath>

#include "GradientText.h"

namespace
{

// Of references from one gradient to the next.
const int MaxHops = 100;
const int SwatchWidth = 320;
const int SwatchHeight = 24;

struct SvgGradient
{
    QString id;
    QString title;
    // The gradient that the stops are taken from, when there are none.
    QString base;
    QGradientStops stops;
};

// "0.5" or "50%". Words such as nan are no numbers.
bool ToFraction(const QString& text, double* fraction)
{
    QString digits = text.trimmed();
    const bool isPercent = digits.endsWith(QLatin1Char('%'));
    if (isPercent)
        digits.chop(1);
    bool isNumber = false;
    const double number = digits.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        return false;
    *fraction = std::clamp(isPercent ? number / 100 : number, 0.0, 1.0);
    return true;
}

QStringList Arguments(const QString& function)
{
    const int open = function.indexOf(QLatin1Char('('));
    const int close = function.lastIndexOf(QLatin1Char(')'));
    QString inner = open >= 0 && close > open ? function.mid(open + 1, close - open - 1) : QString();
    return inner.replace(QRegularExpression(QStringLiteral("[,/\\s]+")), QStringLiteral(" "))
        .trimmed()
        .split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// 0 to 255, or percent.
bool ToChannel(const QString& text, double* channel)
{
    if (text.endsWith(QLatin1Char('%')))
        return ToFraction(text, channel);
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    *channel = std::clamp(number / 255, 0.0, 1.0);
    return isNumber && std::isfinite(number);
}

QColor FromFunction(const QString& text)
{
    const QStringList arguments = Arguments(text);
    double channels[4] = {0, 0, 0, 1};
    for (int i = 0; i < 3; ++i)
    {
        if (!ToChannel(arguments.value(i), &channels[i]))
            return QColor();
    }
    if (arguments.size() > 3 && !ToFraction(arguments.at(3), &channels[3]))
        return QColor();
    return QColor::fromRgbF(channels[0], channels[1], channels[2], channels[3]);
}

// With the alpha behind the colour, as the web writes it.
QColor FromDigits(QString text)
{
    if (text.size() == 5)
    {
        const QString one = text;
        text = one.left(1);
        for (int i = 1; i < 5; ++i)
            text += QString(2, one.at(i));
    }
    if (text.size() == 9)
        text = QLatin1Char('#') + text.right(2) + text.mid(1, 6);
    return text.size() == 4 || text.size() == 7 || text.size() == 9 ? QColor(text) : QColor();
}

// Invalid when it is no colour.
QColor ToColor(const QString& given)
{
    const QString text = given.trimmed().toLower();
    if (text.startsWith(QLatin1Char('#')))
        return FromDigits(text);
    if (text.startsWith(QLatin1String("rgb")))
        return FromFunction(text);
    if (text == QLatin1String("currentcolor") || text == QLatin1String("inherit"))
        return Qt::black;
    return QColor(text);
}

// The declarations of a style attribute.
QHash<QString, QString> Declarations(const QString& style)
{
    QHash<QString, QString> values;
    const QStringList declarations = style.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const QString& declaration : declarations)
    {
        const int colon = declaration.indexOf(QLatin1Char(':'));
        if (colon > 0)
            values.insert(declaration.left(colon).trimmed().toLower(), declaration.mid(colon + 1).trimmed());
    }
    return values;
}

} // namespace

// Reads the gradients of a document and says what is wrong with it.
class SvgReader
{
    Q_DECLARE_TR_FUNCTIONS(GradientText)

public:
    explicit SvgReader(const QByteArray& text) : m_xml(text) { }

    QVector<NamedGradient> Read(const QString& name)
    {
        while (!m_xml.atEnd() && m_reason.isEmpty())
        {
            m_xml.readNext();
            if (m_xml.isStartElement())
                Open();
            else if (m_xml.isEndElement() && IsGradient())
                m_isInside = false;
        }
        if (m_reason.isEmpty() && m_xml.hasError())
            m_reason = tr("Line %1: %2").arg(m_xml.lineNumber()).arg(m_xml.errorString());
        return m_reason.isEmpty() ? Collected(name) : QVector<NamedGradient>();
    }
    QString Reason() const { return m_reason; }

private:
    bool IsGradient() const
    {
        return m_xml.name() == QLatin1String("linearGradient") ||
            m_xml.name() == QLatin1String("radialGradient");
    }

    void Open()
    {
        if (IsGradient())
            OpenGradient();
        else if (m_isInside && m_xml.name() == QLatin1String("stop"))
            AddStop();
        else if (m_isInside && m_xml.name() == QLatin1String("title"))
            m_gradients.last().title = m_xml.readElementText(QXmlStreamReader::SkipChildElements);
    }

    void OpenGradient()
    {
        SvgGradient gradient;
        const QXmlStreamAttributes attributes = m_xml.attributes();
        for (const QXmlStreamAttribute& attribute : attributes)
        {
            if (attribute.name() == QLatin1String("id"))
                gradient.id = attribute.value().toString();
            else if (attribute.name() == QLatin1String("href") &&
                     attribute.value().startsWith(QLatin1Char('#')))
                gradient.base = attribute.value().mid(1).toString();
        }
        m_isInside = true;
        m_gradients.append(gradient);
        if (m_gradients.size() > GradientText::MaxGradients)
            m_reason = tr("It has more than %1 gradients.").arg(GradientText::MaxGradients);
    }

    void AddStop()
    {
        const QXmlStreamAttributes attributes = m_xml.attributes();
        const QHash<QString, QString> style =
            Declarations(attributes.value(QLatin1String("style")).toString());
        const auto valueOf = [&](QLatin1String name)
        { return style.contains(name) ? style.value(name) : attributes.value(name).toString(); };
        const QString offset = attributes.value(QLatin1String("offset")).toString();
        const QString colorText = valueOf(QLatin1String("stop-color"));
        const QString opacityText = valueOf(QLatin1String("stop-opacity"));
        double place = 0;
        double opacity = 1;
        QColor color = colorText.isEmpty() ? QColor(Qt::black) : ToColor(colorText);
        if (!offset.isEmpty() && !ToFraction(offset, &place))
            Refuse(tr("\"%1\" is no place of a stop.").arg(offset.left(40)));
        else if (!color.isValid())
            Refuse(tr("\"%1\" is no colour.").arg(colorText.left(40)));
        else if (!opacityText.isEmpty() && !ToFraction(opacityText, &opacity))
            Refuse(tr("\"%1\" is no opacity.").arg(opacityText.left(40)));
        color.setAlphaF(color.alphaF() * opacity);
        QGradientStops& stops = m_gradients.last().stops;
        stops.append({stops.isEmpty() ? place : std::max(place, stops.constLast().first), color});
        if (stops.size() > GradientText::MaxStops)
            Refuse(tr("A gradient has more than %1 stops.").arg(GradientText::MaxStops));
    }

    void Refuse(const QString& reason) { m_reason = tr("Line %1: %2").arg(m_xml.lineNumber()).arg(reason); }

    // Its own, or those of the gradient that it refers to.
    QGradientStops StopsOf(const SvgGradient& gradient, const QHash<QString, int>& places) const
    {
        const SvgGradient* found = &gradient;
        for (int i = 0; i < MaxHops && found->stops.isEmpty() && places.contains(found->base); ++i)
            found = &m_gradients.at(places.value(found->base));
        QGradientStops stops = found->stops;
        if (stops.size() == 1)
            stops = {{0.0, stops.constFirst().second}, {1.0, stops.constFirst().second}};
        return stops;
    }

    QVector<NamedGradient> Collected(const QString& name)
    {
        QHash<QString, int> places;
        for (int i = 0; i < m_gradients.size(); ++i)
            places.insert(m_gradients.at(i).id, i);
        QVector<NamedGradient> all;
        for (const SvgGradient& gradient : qAsConst(m_gradients))
        {
            const QString named = CleanName(gradient.title.isEmpty() ? gradient.id : gradient.title);
            const QGradientStops stops = StopsOf(gradient, places);
            if (!stops.isEmpty())
                all.append({named.isEmpty() ? name : named, stops});
        }
        if (all.isEmpty())
            m_reason = tr("There is no gradient in it.");
        return all;
    }

    QXmlStreamReader m_xml;
    QString m_reason;
    QVector<SvgGradient> m_gradients;
    bool m_isInside = false;
};

namespace
{

QString NumberText(double value)
{
    return QString::number(value, 'g', 17);
}

// In digits where they say it all.
QString ColorText(const QColor& color)
{
    const QColor plain = QColor::fromRgb(color.rgb());
    if (plain.redF() == color.redF() && plain.greenF() == color.greenF() && plain.blueF() == color.blueF())
        return plain.name();
    return QStringLiteral("rgb(%1%,%2%,%3%)")
        .arg(color.redF() * 100, 0, 'f', 5)
        .arg(color.greenF() * 100, 0, 'f', 5)
        .arg(color.blueF() * 100, 0, 'f', 5);
}

void WriteGradient(QXmlStreamWriter& xml, const NamedGradient& gradient, int number)
{
    xml.writeStartElement(QStringLiteral("linearGradient"));
    xml.writeAttribute(QStringLiteral("id"), QStringLiteral("gradient%1").arg(number));
    xml.writeTextElement(QStringLiteral("title"), CleanName(gradient.name));
    for (const QGradientStop& stop : gradient.stops)
    {
        const QColor color = stop.second.toRgb();
        xml.writeEmptyElement(QStringLiteral("stop"));
        xml.writeAttribute(QStringLiteral("offset"), NumberText(stop.first));
        xml.writeAttribute(QStringLiteral("stop-color"), ColorText(color));
        if (color.alphaF() < 1)
            xml.writeAttribute(QStringLiteral("stop-opacity"), QString::number(color.alphaF(), 'f', 7));
    }
    xml.writeEndElement();
}

// So that the file shows its gradients wherever it is looked at.
void WriteSwatch(QXmlStreamWriter& xml, int number)
{
    xml.writeEmptyElement(QStringLiteral("rect"));
    xml.writeAttribute(QStringLiteral("y"), QString::number((number - 1) * SwatchHeight));
    xml.writeAttribute(QStringLiteral("width"), QString::number(SwatchWidth));
    xml.writeAttribute(QStringLiteral("height"), QString::number(SwatchHeight));
    xml.writeAttribute(QStringLiteral("fill"), QStringLiteral("url(#gradient%1)").arg(number));
}

} // namespace

QVector<NamedGradient> GradientText::ParseSvg(const QByteArray& text, const QString& name, QString* reason)
{
    SvgReader reader(text);
    const QVector<NamedGradient> gradients = reader.Read(name);
    *reason = reader.Reason();
    return gradients;
}

QByteArray GradientText::ToSvg(const QVector<NamedGradient>& gradients)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("svg"));
    xml.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    xml.writeAttribute(QStringLiteral("width"), QString::number(SwatchWidth));
    xml.writeAttribute(QStringLiteral("height"), QString::number(SwatchHeight * gradients.size()));
    xml.writeStartElement(QStringLiteral("defs"));
    for (int i = 0; i < gradients.size(); ++i)
        WriteGradient(xml, gradients.at(i), i + 1);
    xml.writeEndElement();
    for (int i = 0; i < gradients.size(); ++i)
        WriteSwatch(xml, i + 1);
    xml.writeEndDocument();
    return text;
}
