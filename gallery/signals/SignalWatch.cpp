#include "SignalWatch.h"

#include <QColor>
#include <QMetaMethod>
#include <QRect>
#include <QVariant>
#include <QWidget>

#include <utility>

namespace
{
QString textOf(const QVariant& value);

QString textOfList(const QVariantList& list)
{
    QStringList texts;
    for (const QVariant& value : list)
    {
        texts.append(textOf(value));
    }
    return QLatin1Char('[') + texts.join(QStringLiteral(", ")) + QLatin1Char(']');
}

QString textOfRect(const QRectF& rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

QString textOf(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType()))
    {
    case QMetaType::QString:
        return QLatin1Char('"') + value.toString() + QLatin1Char('"');
    case QMetaType::QColor:
        return value.value<QColor>().isValid() ? value.value<QColor>().name(QColor::HexArgb)
                                               : QStringLiteral("<invalid colour>");
    case QMetaType::QPoint:
    case QMetaType::QPointF:
        return QStringLiteral("%1,%2").arg(value.toPointF().x()).arg(value.toPointF().y());
    case QMetaType::QSize:
    case QMetaType::QSizeF:
        return QStringLiteral("%1x%2").arg(value.toSizeF().width()).arg(value.toSizeF().height());
    case QMetaType::QRect:
    case QMetaType::QRectF:
        return textOfRect(value.toRectF());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return textOfList(value.toList());
    default:
        break;
    }
    if (value.canConvert<QString>())
    {
        return value.toString();
    }
    return QStringLiteral("<%1>").arg(QString::fromLatin1(value.typeName()));
}

// The enumeration of this name that the class told the meta-object of, if it did.
QMetaEnum enumOf(const QMetaObject* meta, const QByteArray& typeName)
{
    const QByteArray name = typeName.mid(typeName.lastIndexOf(':') + 1);
    return meta ? meta->enumerator(meta->indexOfEnumerator(name.constData())) : QMetaEnum();
}

// An enumerator by its name if it is known, else its number.
QString textOfEnum(const QMetaEnum& enumeration, int value)
{
    const char* key = enumeration.isValid() ? enumeration.valueToKey(value) : nullptr;
    return key ? QString::fromLatin1(key) : QString::number(value);
}

QString textOfArgument(const QByteArray& typeName, int typeId, const QMetaEnum& enumeration,
                       const void* argument)
{
    if (typeName.endsWith('*'))
    {
        return *static_cast<const void* const*>(argument) ? QStringLiteral("object") : QStringLiteral("null");
    }
    if (enumeration.isValid())
    {
        return textOfEnum(enumeration, *static_cast<const int*>(argument));
    }
    if (typeId == QMetaType::UnknownType)
    {
        return QStringLiteral("<%1>").arg(QString::fromLatin1(typeName));
    }
    if (QMetaType::typeFlags(typeId) & QMetaType::IsEnumeration)
    {
        return textOfEnum(enumOf(QMetaType::metaObjectForType(typeId), typeName),
                          *static_cast<const int*>(argument));
    }
    return textOf(QVariant(typeId, argument));
}

// Types that the class's own code can register on its own are registered thereby.
int typeOfParameter(QObject* object, const QMetaMethod& signal, int index)
{
    int type = signal.parameterType(index);
    if (type == QMetaType::UnknownType)
    {
        void* arguments[] = {&type, &index};
        QMetaObject::metacall(object, QMetaObject::RegisterMethodArgumentMetaType, signal.methodIndex(),
                              arguments);
    }
    return type > 0 ? type : QMetaType::UnknownType;
}
} // namespace

SignalWatch::SignalWatch(Handler handler) : m_handler(std::move(handler)) { }

SignalWatch::~SignalWatch() = default;

QStringList SignalWatch::Names() const
{
    QStringList names;
    for (const Source& source : m_sources)
        names.append(source.name);
    return names;
}

QStringList SignalWatch::Signatures() const
{
    QStringList signatures;
    for (const Source& source : m_sources)
        signatures.append(source.signature);
    return signatures;
}

void SignalWatch::Watch(QObject* object, const QString& name, Housekeeping housekeeping)
{
    const QString prefix = name.isEmpty() ? QString() : name + QLatin1Char('.');
    const QMetaObject* meta = object->metaObject();
    const int first = object->isWidgetType() ? QWidget::staticMetaObject.methodCount()
                                             : QObject::staticMetaObject.methodCount();
    for (int i = first; i < meta->methodCount(); ++i)
    {
        const QMetaMethod method = meta->method(i);
        const bool cloned = method.attributes() & QMetaMethod::Cloned; // a default argument's shorter form
        if (method.methodType() == QMetaMethod::Signal && !cloned)
            watchSignal(object, method, prefix);
    }
    if (housekeeping == WithDestroyed)
        watchSignal(object, QMetaMethod::fromSignal(&QObject::destroyed), prefix);
}

void SignalWatch::watchSignal(QObject* object, const QMetaMethod& signal, const QString& prefix)
{
    Source source;
    source.name = prefix + QString::fromLatin1(signal.name());
    source.signature = prefix + QString::fromLatin1(signal.methodSignature());
    if (signal != QMetaMethod::fromSignal(&QObject::destroyed))
        source.types = signal.parameterTypes();
    for (int i = 0; i < source.types.size(); ++i)
    {
        source.typeIds.append(typeOfParameter(object, signal, i));
        source.enums.append(enumOf(object->metaObject(), source.types.at(i)));
    }
    const int slot = QObject::staticMetaObject.methodCount() + m_sources.size();
    m_sources.append(source);
    QMetaObject::connect(object, signal.methodIndex(), this, slot, Qt::DirectConnection);
}

int SignalWatch::qt_metacall(QMetaObject::Call call, int id, void** arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    const int count = m_sources.size();
    if (id < count)
        m_handler(heard(m_sources.at(id), arguments));
    return id - count;
}

HeardSignal SignalWatch::heard(const Source& source, void** arguments)
{
    HeardSignal signal = {source.name, source.signature, QString(), QVariantList()};
    QStringList texts;
    for (int i = 0; i < source.types.size(); ++i)
    {
        const int typeId = source.typeIds.at(i);
        texts.append(textOfArgument(source.types.at(i), typeId, source.enums.at(i), arguments[i + 1]));
        signal.arguments.append(typeId == QMetaType::UnknownType ? QVariant()
                                                                 : QVariant(typeId, arguments[i + 1]));
    }
    signal.text = source.name + QLatin1Char('(') + texts.join(QStringLiteral(", ")) + QLatin1Char(')');
    return signal;
}
