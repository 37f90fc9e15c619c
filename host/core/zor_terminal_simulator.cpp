#include "zor_terminal_simulator.h"

#include "module/zor_cp1251.h"

#include <QRegularExpression>
#include <QString>

#include <cstring>
#include <utility>
#include <vector>

namespace {

// A line longer than this is no command; it is answered as unknown rather
// than kept growing while the sender never pauses.
const int kMaxRequest = 4096;

const char* const kIccid[] = {"8970101234567890128", "8970201234567890127"};

struct State
{
    int& nSmsMode;
    int& nRateMs;
};

using Answer = QString (*)(const QRegularExpressionMatch&, State&);

struct Rule
{
    const char* pattern;
    Answer answer;
};

// Every request the simulated terminal knows. A "*?" request is answered
// with "*#", a "*!" command acknowledged with "*@" and the same text.
const Rule kRules[] = {
    {R"(\*\?V)", [](const QRegularExpressionMatch&, State&) { return QStringLiteral("*#V ZOR-SIM 3.5.8"); }},
    {R"(\*\?S)",
        [](const QRegularExpressionMatch&, State& s) {
            return QStringLiteral("*#S GSM:1,GNSS:1,SAT:9,SMS:%1,RATE:%2").arg(s.nSmsMode).arg(s.nRateMs);
        }},
    {R"(\*\?VERSION)",
        [](const QRegularExpressionMatch&, State&) { return QStringLiteral("*#VERSION ZOR-SIM 3.5.8 (01.03.2026)"); }},
    {R"(\*\?IMEI)", [](const QRegularExpressionMatch&, State&) { return QStringLiteral("*#IMEI 356938035643809"); }},
    {R"(\*\?PING(?: (\d{1,5}))?)",
        [](const QRegularExpressionMatch& m, State&) {
            return m.captured(1).isEmpty() ? QStringLiteral("*#PING") : QStringLiteral("*#PING ") + m.captured(1);
        }},
    {R"(\*\?GSM)",
        [](const QRegularExpressionMatch&, State&) {
            return QStringLiteral("*#GSM LEVEL:23,REG:1,ROAMING:0,OPER:25001,SIM:1");
        }},
    {R"(\*\?GPS)",
        [](const QRegularExpressionMatch&, State&) {
            return QStringLiteral("*#GPS VALID:1,SAT:9,LAT:55.752200,LON:37.615600,ALT:156,SPD:0.0,CRS:0");
        }},
    {R"(\*!(RESET|SETT_RESET))",
        [](const QRegularExpressionMatch& m, State& s) {
            if (m.captured(1) == QLatin1String("SETT_RESET")) {
                s.nSmsMode = 0;
                s.nRateMs = 1000;
            }
            return QStringLiteral("*@") + m.captured(1);
        }},
    {R"(\*\?ICCID ([0-3]))",
        [](const QRegularExpressionMatch& m, State&) {
            const int nMask = m.captured(1).toInt();
            QString qsReply = QStringLiteral("*#ICCID %1").arg(nMask);
            for (int nSim = 1; nSim <= 2; ++nSim) {
                if (nMask & nSim)
                    qsReply += QLatin1Char(',') + QLatin1String(kIccid[nSim - 1]);
            }
            return qsReply;
        }},
    {R"(\*\?USSD:(.*))",
        [](const QRegularExpressionMatch&, State&) {
            return QStringLiteral("*#USSD:Баланс 152,40 р. Пакет: 812 МБ до 31.12");
        }},
    {R"(\*!UC GPS,(PQPZ90,W,[01],0|PMTK330,(?:223|0)|PMTK353,[01],[01],0,0,0|)"
     R"(PMTK220,(1000|500|200|100)|PMTK311,(?:[5-9]|1[0-5])|PMTK104))",
        [](const QRegularExpressionMatch& m, State& s) {
            if (!m.captured(2).isEmpty())
                s.nRateMs = m.captured(2).toInt();
            return QStringLiteral("*@UC GPS,") + m.captured(1);
        }},
    {R"(\*!EDIT PHONES:MODE\(([01])\))",
        [](const QRegularExpressionMatch& m, State& s) {
            s.nSmsMode = m.captured(1).toInt();
            return QStringLiteral("*@EDIT PHONES:MODE(%1)").arg(s.nSmsMode);
        }},
};

// Where the request at the start of the buffer ends: {end, bytes to drop
// after it}, or {-1, 0} while it may still go on.
std::pair<int, int> requestEnd(const QByteArray& buf)
{
    for (int i = 0; i < buf.size(); ++i) {
        const char c = buf.at(i);
        if (c == '\r' || c == '\n')
            return {i, 1};
        if (c == '*' && i > 0 && i + 1 < buf.size() && strchr("?!>", buf.at(i + 1)))
            return {i, 0};
    }
    if (buf.size() > kMaxRequest)
        return {buf.size(), 0};
    return {-1, 0};
}

} // namespace

QByteArray ZOR_TerminalSimulator::iccid(int nSim)
{
    return nSim == 1 || nSim == 2 ? QByteArray(kIccid[nSim - 1]) : QByteArray();
}

QByteArray ZOR_TerminalSimulator::reply(const QByteArray& request)
{
    static const auto rules = [] {
        std::vector<std::pair<QRegularExpression, Answer>> v;
        for (const Rule& r : kRules)
            v.emplace_back(
                QRegularExpression(QRegularExpression::anchoredPattern(QString::fromLatin1(r.pattern))), r.answer);
        return v;
    }();
    const QString qsRequest = ZOR_Cp1251::decode(request);
    State state{m_nSmsMode, m_nRateMs};
    QString qsReply;
    for (const auto& rule : rules) {
        const QRegularExpressionMatch m = rule.first.match(qsRequest);
        if (m.hasMatch()) {
            qsReply = rule.second(m, state);
            break;
        }
    }
    if (qsReply.isEmpty())
        qsReply = QStringLiteral("*#ERROR:") + qsRequest.left(64);
    return ZOR_Cp1251::encode(qsReply) + "\r\n";
}

QByteArray ZOR_TerminalSimulator::feed(const QByteArray& bytes)
{
    m_pending += bytes;
    QByteArray replies;
    for (auto end = requestEnd(m_pending); end.first >= 0; end = requestEnd(m_pending))
        replies += takeRequest(end.first, end.second);
    return replies;
}

QByteArray ZOR_TerminalSimulator::flush()
{
    return takeRequest(m_pending.size(), 0);
}

QByteArray ZOR_TerminalSimulator::takeRequest(int nEnd, int nSkip)
{
    const QByteArray request = m_pending.left(nEnd);
    m_pending.remove(0, nEnd + nSkip);
    return request.isEmpty() ? QByteArray() : reply(request);
}
