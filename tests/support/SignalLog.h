// Records all signals of one or several objects in the order in which they were emitted.

#pragma once

#include <QList>
#include <QMetaEnum>
#include <QObject>
#include <QStringList>
#include <QVariantList>

class QMetaMethod;

//     SignalLog log(&bar);
//     bar.SetSize(5);
//     QCOMPARE(log.Entries(), QStringList({"SizeChanged(5)"}));
//
// All signals of the object's class and its bases are watched but those of QObject and QWidget. In an entry,
// strings stand in quotes, pointers are "null" or "object", colours are "#aarrggbb", numbers are plain,
// points are "3,4", sizes "3x4", rectangles "1,2 3x4", lists "[a, b]"; a value of a type that has no text is
// "<Type>".
class SignalLog : public QObject
{
public:
    enum Housekeeping
    {
        WithoutHousekeeping,
        WithDestroyed // destroyed(QObject*) is recorded as "destroyed()"
    };

    explicit SignalLog(QObject* object, Housekeeping housekeeping = WithoutHousekeeping);
    // Without an object yet: Watch() follows.
    SignalLog();
    ~SignalLog() override;

    // Watches a further object. With a name, its entries read "name.SizeChanged(5)".
    void Watch(QObject* object, const QString& name = QString(),
               Housekeeping housekeeping = WithoutHousekeeping);

    QStringList Entries() const;
    // How often this signal was emitted ("SizeChanged", or "name.SizeChanged"), all overloads together; one
    // alone if asked for as "valueChanged(int)". Without a name, all entries.
    int Count(const QString& signal = QString()) const;
    // The arguments of one entry. Those of types unknown to the meta-type system are invalid variants.
    QVariantList Arguments(int entry) const;
    void Clear();
    // Names of the signals that are watched.
    QStringList Watched() const;

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    struct Source
    {
        QString Name;
        QString Signature;
        QList<QByteArray> Types;
        QList<int> TypeIds;
        QList<QMetaEnum> Enums; // of types that the meta-type system does not know
    };
    struct Entry
    {
        QString Name;
        QString Signature;
        QString Text;
        QVariantList Arguments;
    };

    void watchSignal(QObject* object, const QMetaMethod& signal, const QString& prefix);
    void record(const Source& source, void** arguments);

    QList<Source> m_sources;
    QList<Entry> m_entries;
};
