#pragma once

#include <QList>
#include <QMetaEnum>
#include <QObject>
#include <QStringList>
#include <QVariantList>

#include <functional>

class QMetaMethod;

// One signal, as it was emitted.
struct HeardSignal
{
    QString name; // "SizeChanged"
    QString signature; // "SizeChanged(int)"
    QString text; // "SizeChanged(5)"
    // Those of types unknown to the meta-type system are invalid variants.
    QVariantList arguments;
};

// Hears all signals of one or several objects without knowing their classes.
//
// All signals of an object's class and its bases are heard but those of QObject and QWidget. In a text,
// strings stand in quotes, pointers are "null" or "object", colours are "#aarrggbb", numbers are plain,
// points are "3,4", sizes "3x4", rectangles "1,2 3x4", lists "[a, b]"; a value of a type that has no text is
// "<Type>".
class SignalWatch : public QObject
{
public:
    using Handler = std::function<void(const HeardSignal&)>;

    enum Housekeeping
    {
        WithoutHousekeeping,
        WithDestroyed // destroyed(QObject*) is heard as "destroyed()"
    };

    // The handler is called with each signal while it is emitted.
    explicit SignalWatch(Handler handler);
    ~SignalWatch() override;

    // Names and signatures of the signals that are watched, in the order of their declaration.
    QStringList Names() const;
    QStringList Signatures() const;

    // Watches a further object, which may go first. With a name, its signals are "name.SizeChanged".
    void Watch(QObject* object, const QString& name = QString(),
               Housekeeping housekeeping = WithoutHousekeeping);

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    struct Source
    {
        QString name;
        QString signature;
        QList<QByteArray> types;
        QList<int> typeIds;
        QList<QMetaEnum> enums; // of types that the meta-type system does not know
    };

    void watchSignal(QObject* object, const QMetaMethod& signal, const QString& prefix);
    static HeardSignal heard(const Source& source, void** arguments);

    Handler m_handler;
    QList<Source> m_sources;
};
