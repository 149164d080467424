#include "SignalLog.h"

SignalLog::SignalLog() : m_watch([this](const HeardSignal& signal) { m_entries.append(signal); }) { }

SignalLog::SignalLog(QObject* object, Housekeeping housekeeping) : SignalLog()
{
    Watch(object, QString(), housekeeping);
}

void SignalLog::Watch(QObject* object, const QString& name, Housekeeping housekeeping)
{
    m_watch.Watch(object, name, housekeeping);
}

QStringList SignalLog::Entries() const
{
    QStringList texts;
    for (const HeardSignal& entry : m_entries)
    {
        texts.append(entry.text);
    }
    return texts;
}

int SignalLog::Count(const QString& signal) const
{
    int count = 0;
    for (const HeardSignal& entry : m_entries)
    {
        count += signal.isEmpty() || entry.name == signal || entry.signature == signal ? 1 : 0;
    }
    return count;
}

QVariantList SignalLog::Arguments(int entry) const
{
    return m_entries.value(entry).arguments;
}

void SignalLog::Clear()
{
    m_entries.clear();
}

QStringList SignalLog::Watched() const
{
    return m_watch.Names();
}
