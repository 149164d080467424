#pragma once

#include <QObject>
#include <QPointer>

// Cuts one connection for as long as the object lives, so that a slot may change what would call it back:
// disconnect, change, connect. A connection that isn't there, as inside of another cut, stays away, and so
// does one whose sender or receiver dies meanwhile. Afterwards it is the last in the sender's list.
template <class Sender, class Signal, class Receiver, class Slot>
class ConnectionCut
{
public:
    ConnectionCut(Sender* sender, Signal signal, Receiver* receiver, Slot slot)
        : m_pSender(sender),
          m_pReceiver(receiver),
          m_signal(signal),
          m_slot(slot),
          m_cut(QObject::disconnect(sender, signal, receiver, slot))
    {
    }
    ~ConnectionCut()
    {
        if (m_cut && m_pSender && m_pReceiver)
            QObject::connect(m_pSender.data(), m_signal, m_pReceiver.data(), m_slot);
    }
    ConnectionCut(const ConnectionCut&) = delete;
    ConnectionCut& operator=(const ConnectionCut&) = delete;

private:
    QPointer<Sender> m_pSender;
    QPointer<Receiver> m_pReceiver;
    Signal m_signal;
    Slot m_slot;
    bool m_cut;
};
