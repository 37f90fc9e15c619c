#include "zor_reply_assembler.h"

ZOR_ReplyAssembler::ZOR_ReplyAssembler(QObject* parent)
    : QObject(parent)
{
    m_idle.setSingleShot(true);
    m_idle.setInterval(nDefaultIdleGapMs);
    connect(&m_idle, &QTimer::timeout, this, &ZOR_ReplyAssembler::flush);
}

void ZOR_ReplyAssembler::setIdleGapMs(int nMs)
{
    m_idle.setInterval(qMax(0, nMs));
}

void ZOR_ReplyAssembler::feed(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return;
    // What was pending holds no line end (it would have ended a reply), so
    // only the new bytes need a look: a slow 64 KB block stays linear.
    const int nScan = m_pending.size();
    m_pending += bytes;
    int nStart = 0;
    for (;;) {
        const int nEnd = m_pending.indexOf('\n', qMax(nStart, nScan));
        const int nLimit = nStart + nMaxBlock;
        if (nEnd >= 0 && nEnd < nLimit) {
            emit signal_Reply(m_pending.mid(nStart, nEnd + 1 - nStart));
            nStart = nEnd + 1;
        } else if (m_pending.size() >= nLimit) {
            emit signal_Reply(m_pending.mid(nStart, nMaxBlock));
            nStart = nLimit;
        } else {
            break;
        }
    }
    m_pending.remove(0, nStart);
    if (m_pending.isEmpty())
        m_idle.stop();
    else
        m_idle.start(); // the gap counts from the last byte
}

void ZOR_ReplyAssembler::flush()
{
    m_idle.stop();
    if (m_pending.isEmpty())
        return;
    const QByteArray bytes = m_pending;
    m_pending.clear();
    emit signal_Reply(bytes);
}

void ZOR_ReplyAssembler::clear()
{
    m_idle.stop();
    m_pending.clear();
}
