// Records all signals of one or several objects in the order in which they were emitted.

#pragma once

#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantList>

#include "SignalWatch.h"

//     SignalLog log(&bar);
//     bar.SetSize(5);
//     QCOMPARE(log.Entries(), QStringList({"SizeChanged(5)"}));
//
// Which signals are watched, and how an entry is worded, is told in SignalWatch.h.
class SignalLog
{
public:
    using Housekeeping = SignalWatch::Housekeeping;
    static const Housekeeping WithoutHousekeeping = SignalWatch::WithoutHousekeeping;
    static const Housekeeping WithDestroyed = SignalWatch::WithDestroyed;

    explicit SignalLog(QObject* object, Housekeeping housekeeping = WithoutHousekeeping);
    // Without an object yet: Watch() follows.
    SignalLog();

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

private:
    SignalWatch m_watch;
    QList<HeardSignal> m_entries;
};
