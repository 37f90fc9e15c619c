#ifndef ZOR_FORM_CONFIG_TRANSFER_SRVALG_H
#define ZOR_FORM_CONFIG_TRANSFER_SRVALG_H

// "Алгоритм работы с телематическими серверами": per SIM card when mobile
// data, calls and SMS may be used at home and in roaming and which operators
// are allowed, plus the server connection timers.
//
// Nodes below the parent element, in this order: "SIM1RULES", "SIM1BLIST",
// "SIM1WLIST", then on a two-SIM terminal "SIM2RULES", "SIM2BLIST",
// "SIM2WLIST", then "RULES" and "ROAM". A missing node is skipped. The page
// opens the list nodes and hands them to the list dialogs. On a
// one-SIM terminal (the default) the SIM 2 nodes are neither read nor
// written, so a document made for a two-SIM terminal keeps them as they are.
//
// Timers are stored in seconds. "ROAM" shows them in whole minutes (5400 is
// 90 min; 90 shows 1 min and is saved as 60; out of the box's range loads
// clamped); the blocking timers and the home connection period show hours
// and minutes as the time of day that many seconds after midnight (5400 is
// 01:30, 86400 is 00:00, 90000 is 01:00; a negative value counts back from
// midnight). "grpTimer" 0 means grouping is off.
//
// Data states ("cnctH" 0..2, "cnctR" 0..4): 0 off, 1 always connected,
// 2 connect periodically, 3 one message per period (roaming), 4 alarm
// messages only (roaming). An unknown caption is saved as 0; an unknown
// stored state loads the default of its table row. The states of
// the SIM cards in use switch the server settings the way they matter:
//   - ping period and "telemetry instead of ping": some SIM is always
//     connected (home or roaming);
//   - home connection period and "connect even with nothing to send": some
//     SIM connects periodically at home;
//   - the roaming group: some SIM uses data in roaming; within it the
//     roaming period needs state 2, the moving/parked periods state 3;
//   - the other server rules: some SIM uses data at all; the grouping period
//     also needs its check box.
// Calls, SMS and the operator lists stay editable whatever the data states.
// Disabled settings keep and save their values.
//
// Roaming read mode (setRoamingReadMode), for SIM 1 only: in mode 0 a
// missing "cnctR", "callR" or "smsR" reads as 0, in mode 1 as 1; in any other
// mode the three are not read at all and keep what the page shows.

#include "config/zor_captionlist.h"
#include "config/zor_form_config.h"
#include "config/zor_formbinding.h"

#include <QPair>
#include <QVector>

#include <memory>

namespace Ui {
class ZOR_Form_Config_Transfer_SrvAlg;
class ZOR_SrvAlg_Sim;
} // namespace Ui
class ZOR_Form_Config_Transfer_SrvAlg_BList;
class ZOR_Form_Config_Transfer_SrvAlg_WList;

class ZOR_Form_Config_Transfer_SrvAlg : public ZOR_Form_Config
{
    Q_OBJECT
public:
    static constexpr int nSimMax = 2;

    explicit ZOR_Form_Config_Transfer_SrvAlg(QWidget* parent = nullptr);
    ~ZOR_Form_Config_Transfer_SrvAlg() override;

    void initForm() override;
    void translateForm() override;
    void setDefaultParam() override;
    void readFormParam(CXMLWorkData* lpParent) override;
    void writeFormParam(CXMLWorkData* lpParent) override;
    void applyProfile(const ZOR_TerminalProfile& profile) override;

    void setDeviceUseTwoSim(bool bUseTwoSim);
    bool deviceUseTwoSim() const { return m_bTwoSim; }
    void setRoamingReadMode(int nMode);
    int roamingReadMode() const { return m_nRoamingReadMode; }

    // Lists and rule widgets of SIM nSim (1 or 2).
    ZOR_Form_Config_Transfer_SrvAlg_BList* blackList(int nSim) const;
    ZOR_Form_Config_Transfer_SrvAlg_WList* whiteList(int nSim) const;
    QWidget* simPage(int nSim) const;

public slots:
    void slot_changed_DataStates();

private:
    struct Sim
    {
        std::unique_ptr<Ui::ZOR_SrvAlg_Sim> ui;
        ZOR_FormBinding bind;
        ZOR_Form_Config_Transfer_SrvAlg_BList* lpBList = nullptr;
        ZOR_Form_Config_Transfer_SrvAlg_WList* lpWList = nullptr;
    };

    int simCount() const { return m_bTwoSim ? 2 : 1; }
    void bindSim(int nIndex);
    void readSim(int nIndex, CXMLWorkData* lpNode);
    QVector<QPair<ZOR_Form_Config*, QString>> listNodes(int nIndex) const;

    std::unique_ptr<Ui::ZOR_Form_Config_Transfer_SrvAlg> ui;
    Sim m_sims[nSimMax];
    ZOR_CaptionList m_homeStates;
    ZOR_CaptionList m_roamStates;
    ZOR_FormBinding m_rules;
    ZOR_FormBinding m_roam;
    bool m_bTwoSim = false;
    int m_nRoamingReadMode = 0;
};

#endif
