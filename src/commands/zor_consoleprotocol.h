#ifndef ZOR_CONSOLEPROTOCOL_H
#define ZOR_CONSOLEPROTOCOL_H

// What the console says to a terminal and what it reads back, without any
// widget: the bytes of a typed command line (with its backslash escapes),
// the fixed commands of the console's buttons, and the ICCID reply.

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

class ZOR_ConsoleProtocol : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_ConsoleProtocol(QObject* parent = nullptr);

    // The free command line as bytes: "\hh" is the byte hh, "\\" one
    // backslash; anything else, and a malformed escape, goes as typed.
    static QByteArray getUniCommand(const QString& qsCommand);

    enum class SatSystems { Gps, Glonass, GpsGlonass };
    // dialect: the host's answer (0 or 1); "" for any other dialect.
    static QString coordSystemCommand(int nDialect, bool bPz90);
    static QString satSystemsCommand(SatSystems systems);
    // nIndex into nmeaRateCaptions(); an unknown index asks for 1 Hz.
    static QString nmeaRateCommand(int nIndex);
    static QStringList nmeaRateCaptions();
    static QString elevationCommand(int nDegrees);
    static QString coldStartCommand();
    static QString smsTelemetryCommand(bool bOn);
    static QString balanceCommand(const QString& qsUssd);
    static QString iccIdCommand(bool bSim1, bool bSim2);

    // The display text of one ICCID field of the reply.
    static QString getIccIdType(const QString& qsField);
    // A "*#ICCID <mask>,<field>[,<field>]" reply: which SIM results it
    // fills, and with what. Nothing is set for any other text.
    struct IccIdReply
    {
        bool bSim1 = false;
        bool bSim2 = false;
        QString qsSim1;
        QString qsSim2;
    };
    static IccIdReply parseIccIdReply(const QByteArray& data);
};

#endif
