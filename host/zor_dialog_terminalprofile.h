#ifndef ZOR_DIALOG_TERMINALPROFILE_H
#define ZOR_DIALOG_TERMINALPROFILE_H

// The terminal a configuration is meant for (ZOR_TerminalProfile): SIM
// count, CAN variant, Bluetooth slots and the field-set limits, set by hand
// or - as far as the terminal answers - asked from the connected terminal
// (the SIM count from the ICCID answer).

#include "config/zor_terminalprofile.h"

#include <QDialog>
#include <QPointer>
#include <QVector>

#include <memory>

namespace Ui {
class ZOR_Dialog_TerminalProfile;
}
class QCheckBox;
class QSpinBox;
class QTimer;
class ZOR_TerminalLink;

class ZOR_Dialog_TerminalProfile : public QDialog
{
    Q_OBJECT
public:
    explicit ZOR_Dialog_TerminalProfile(QWidget* parent = nullptr);
    ~ZOR_Dialog_TerminalProfile() override;

    void setProfile(const ZOR_TerminalProfile& profile);
    ZOR_TerminalProfile profile() const;
    // The link to ask; null: only by hand.
    void setLink(ZOR_TerminalLink* lpLink);

    // The SIM count an ICCID answer ("*#ICCID 3,<iccid>,<iccid>") reports;
    // 0 when the text is no such answer.
    static int simCountOfAnswer(const QByteArray& answer);

private:
    void slot_clicked_Ask();
    void slot_Received(const QByteArray& bytes);
    void finishAsking(const QString& qsResult);

    std::unique_ptr<Ui::ZOR_Dialog_TerminalProfile> ui;
    QVector<QCheckBox*> m_checks;
    QVector<QSpinBox*> m_spins;
    QPointer<ZOR_TerminalLink> m_lpLink;
    QTimer* m_lpTimeout;
    QByteArray m_answer;
};

#endif
