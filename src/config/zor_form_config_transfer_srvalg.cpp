#include "config/zor_form_config_transfer_srvalg.h"

#include "ui_zor_form_config_transfer_srvalg.h"
#include "ui_zor_form_config_transfer_srvalg_sim.h"

#include "config/zor_form_config_transfer_srvalg_blist.h"
#include "config/zor_form_config_transfer_srvalg_wlist.h"
#include "config/zor_terminalprofile.h"
#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QPushButton>
#include <QScreen>
#include <QTime>

namespace {

constexpr int kGroupSecondsDefault = 30;
constexpr int kSecondsPerDay = 86400;

// The roaming values whose reading for SIM 1 follows the read mode.
bool isRoamingValue(const QByteArray& attr)
{
    return attr == "cnctR" || attr == "callR" || attr == "smsR";
}

// Seconds shown in whole minutes; the remainder is dropped.
void bindMinutes(ZOR_FormBinding& bind, const char* lpAttr, QSpinBox* lpSpin, int nDefaultSeconds)
{
    bind.custom(
        lpAttr, lpSpin, QString::number(nDefaultSeconds), [lpSpin] { return QString::number(lpSpin->value() * 60); },
        [lpSpin](const QString& qsValue) { lpSpin->setValue(ZOR_FormBinding::intValue(qsValue) / 60); });
}

// Seconds shown as hours and minutes of the time of day that many seconds
// after midnight.
void bindHoursMinutes(ZOR_FormBinding& bind, const char* lpAttr, QWidget* lpBox, QSpinBox* lpHours, QSpinBox* lpMinutes,
    int nDefaultSeconds)
{
    bind.custom(
        lpAttr, lpBox, QString::number(nDefaultSeconds),
        [lpHours, lpMinutes] { return QString::number(lpHours->value() * 3600 + lpMinutes->value() * 60); },
        [lpHours, lpMinutes](const QString& qsValue) {
            const QTime time = QTime(0, 0).addSecs(ZOR_FormBinding::intValue(qsValue) % kSecondsPerDay);
            lpHours->setValue(time.hour());
            lpMinutes->setValue(time.minute());
        });
}

int stateOf(const ZOR_CaptionList& list, const QComboBox* lpBox)
{
    return list.currentCode(lpBox).toInt();
}

} // namespace

namespace {

// An operator list opens at a size that shows its title and rows, beside
// the page it belongs to, and inside the screen.
void showBeside(QWidget* lpList, QWidget* lpPage)
{
    const QSize wanted = lpList->sizeHint().expandedTo(QSize(420, 360));
    if (!lpList->isVisible())
        lpList->resize(wanted.expandedTo(lpList->size()));
    const QWidget* lpWindow = lpPage->window();
    const QRect frame = lpWindow->frameGeometry();
    QRect area = QRect(QPoint(0, 0), lpList->size());
    if (const QScreen* lpScreen = lpWindow->screen())
        area = lpScreen->availableGeometry();
    QPoint at(frame.right() + 8, frame.top() + 40);
    if (at.x() + lpList->width() > area.right())
        at.setX(frame.center().x() - lpList->width() / 2);
    at.setX(qBound(area.left(), at.x(), qMax(area.left(), area.right() - lpList->width())));
    at.setY(qBound(area.top(), at.y(), qMax(area.top(), area.bottom() - lpList->height() - 40)));
    lpList->move(at);
    lpList->show();
    lpList->raise();
    lpList->activateWindow();
}

} // namespace

ZOR_Form_Config_Transfer_SrvAlg::ZOR_Form_Config_Transfer_SrvAlg(QWidget* parent)
    : ZOR_Form_Config(parent)
    , ui(new Ui::ZOR_Form_Config_Transfer_SrvAlg)
{
    ui->setupUi(this);
    initForm();
    translateForm();
    setDefaultParam();
    watchEdits(this);
}

ZOR_Form_Config_Transfer_SrvAlg::~ZOR_Form_Config_Transfer_SrvAlg() = default;

void ZOR_Form_Config_Transfer_SrvAlg::initForm()
{
    m_homeStates.add("0", "cfgt1_122").add("1", "cfgt1_123").add("2", "cfgt1_124");
    m_roamStates.add("0", "cfgt1_122")
        .add("1", "cfgt1_123")
        .add("2", "cfgt1_124")
        .add("3", "cfgt1_125")
        .add("4", "cfgt1_126");

    QWidget* pages[nSimMax] = {ui->tabSim1, ui->tabSim2};
    for (int i = 0; i < nSimMax; ++i) {
        Sim& sim = m_sims[i];
        sim.ui.reset(new Ui::ZOR_SrvAlg_Sim);
        sim.ui->setupUi(pages[i]);
        sim.lpBList = new ZOR_Form_Config_Transfer_SrvAlg_BList(this);
        sim.lpWList = new ZOR_Form_Config_Transfer_SrvAlg_WList(this);
        sim.lpBList->setSimNumber(i + 1);
        sim.lpWList->setSimNumber(i + 1);
        bindSim(i);
        for (ZOR_Form_Config* lpList :
            {static_cast<ZOR_Form_Config*>(sim.lpBList), static_cast<ZOR_Form_Config*>(sim.lpWList)}) {
            QPushButton* lpButton = lpList == sim.lpBList ? sim.ui->btnBList : sim.ui->btnWList;
            connect(lpButton, &QPushButton::clicked, lpList, [this, lpList] { showBeside(lpList, this); });
        }
        for (QComboBox* lpBox : {sim.ui->comboCnctH, sim.ui->comboCnctR})
            connect(lpBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &ZOR_Form_Config_Transfer_SrvAlg::slot_changed_DataStates);
    }
    connect(ui->checkGroup, &QCheckBox::toggled, this, &ZOR_Form_Config_Transfer_SrvAlg::slot_changed_DataStates);

    m_rules.integer("pingTimer", ui->spinPingTimer, 90)
        .check("telAddPing", ui->checkTelAddPing, false)
        .check("noPriorMsg", ui->checkNoPriorMsg, true)
        .check("noCur", ui->checkNoCur, false)
        .custom(
            "grpTimer", ui->checkGroup, QString::number(kGroupSecondsDefault),
            [this] {
                return ui->checkGroup->isChecked() ? QString::number(ui->spinGrpTimer->value()) : QStringLiteral("0");
            },
            [this](const QString& qsValue) {
                const int nSeconds = ZOR_FormBinding::intValue(qsValue);
                ui->checkGroup->setChecked(nSeconds != 0);
                ui->spinGrpTimer->setValue(nSeconds != 0 ? nSeconds : kGroupSecondsDefault);
            })
        .check("useCmd", ui->checkUseCmd, true);
    bindHoursMinutes(m_rules, "cnctTimer", ui->widgetCnctTimer, ui->spinCnctHours, ui->spinCnctMinutes, 3600);
    m_rules.check("coercCnct", ui->checkCoercCnct, false);
    bindHoursMinutes(m_rules, "blockTimer", ui->widgetBlockTimer, ui->spinBlockHours, ui->spinBlockMinutes, 300);

    bindMinutes(m_roam, "cnctTimer", ui->spinRoamCnctTimer, 3600);
    bindMinutes(m_roam, "moveTimer", ui->spinRoamMoveTimer, 1800);
    bindMinutes(m_roam, "stopTimer", ui->spinRoamStopTimer, 3600);
    bindHoursMinutes(
        m_roam, "blockTimer", ui->widgetRoamBlockTimer, ui->spinRoamBlockHours, ui->spinRoamBlockMinutes, 300);

    ui->tabSims->setTabVisible(1, m_bTwoSim);
}

void ZOR_Form_Config_Transfer_SrvAlg::bindSim(int nIndex)
{
    Sim& sim = m_sims[nIndex];
    const bool bRoam = nIndex == 0 && m_nRoamingReadMode == 1;
    sim.bind.clear();
    // A data state: an unknown caption is saved as state 0.
    sim.bind.numberCaption("cnctH", sim.ui->comboCnctH, &m_homeStates, 1, 0)
        .numberCaption("cnctR", sim.ui->comboCnctR, &m_roamStates, bRoam ? 1 : 0, 0)
        .check("callH", sim.ui->checkCallH, true)
        .check("callR", sim.ui->checkCallR, bRoam)
        .check("smsH", sim.ui->checkSmsH, true)
        .check("smsR", sim.ui->checkSmsR, bRoam)
        .check("listH", sim.ui->checkListH, false)
        .check("autoOper", sim.ui->checkAutoOper, false);
}

void ZOR_Form_Config_Transfer_SrvAlg::translateForm()
{
    ui->labelTitle->setText(zorTr("cfgsrv_001"));
    for (int i = 0; i < nSimMax; ++i) {
        Ui::ZOR_SrvAlg_Sim& s = *m_sims[i].ui;
        ui->tabSims->setTabText(i, zorTr("cfgsrv_041").arg(i + 1));
        s.labelHome->setText(zorTr("cfgsrv_002"));
        s.labelRoam->setText(zorTr("cfgsrv_003"));
        s.labelData->setText(zorTr("cfgsrv_004"));
        s.labelCalls->setText(zorTr("cfgsrv_005"));
        s.labelSms->setText(zorTr("cfgsrv_006"));
        s.checkCallH->setText(zorTr("cfgsrv_007"));
        s.checkSmsH->setText(zorTr("cfgsrv_007"));
        s.checkCallR->setText(zorTr("cfgsrv_008"));
        s.checkSmsR->setText(zorTr("cfgsrv_009"));
        s.checkListH->setText(zorTr("cfgsrv_010"));
        s.checkAutoOper->setText(zorTr("cfgsrv_011"));
        s.btnBList->setText(zorTr("cfgsrv_012") + QStringLiteral("..."));
        s.btnWList->setText(zorTr("cfgsrv_013") + QStringLiteral("..."));
        m_homeStates.fill(s.comboCnctH);
        m_roamStates.fill(s.comboCnctR);
        m_sims[i].lpBList->translateForm();
        m_sims[i].lpWList->translateForm();
    }

    const QString qsSeconds = zorTr("cfgsrv_020");
    const QString qsMinutes = zorTr("cfgsrv_034");
    const QString qsHours = zorTr("cfgsrv_035");
    ui->groupRules->setTitle(zorTr("cfgsrv_036"));
    ui->labelPingTimer->setText(zorTr("cfgsrv_019"));
    ui->spinPingTimer->setSuffix(qsSeconds);
    ui->checkTelAddPing->setText(zorTr("cfgsrv_021"));
    ui->checkNoPriorMsg->setText(zorTr("cfgsrv_022"));
    ui->checkNoCur->setText(zorTr("cfgsrv_023"));
    ui->checkGroup->setText(zorTr("cfgsrv_024"));
    ui->spinGrpTimer->setSuffix(qsSeconds);
    ui->checkUseCmd->setText(zorTr("cfgsrv_025"));
    ui->labelCnctTimer->setText(zorTr("cfgsrv_026"));
    ui->labelHomeOnly->setText(zorTr("cfgsrv_027"));
    ui->checkCoercCnct->setText(zorTr("cfgsrv_028"));
    ui->labelBlockTimer->setText(zorTr("cfgsrv_029"));
    ui->groupRoam->setTitle(zorTr("cfgsrv_030"));
    ui->labelRoamCnctTimer->setText(zorTr("cfgsrv_031"));
    ui->labelRoamMoveTimer->setText(zorTr("cfgsrv_032"));
    ui->labelRoamStopTimer->setText(zorTr("cfgsrv_033"));
    ui->labelRoamBlockTimer->setText(zorTr("cfgsrv_029"));
    for (QSpinBox* lpSpin : {ui->spinRoamCnctTimer, ui->spinRoamMoveTimer, ui->spinRoamStopTimer, ui->spinCnctMinutes,
             ui->spinBlockMinutes, ui->spinRoamBlockMinutes})
        lpSpin->setSuffix(qsMinutes);
    for (QSpinBox* lpSpin : {ui->spinCnctHours, ui->spinBlockHours, ui->spinRoamBlockHours})
        lpSpin->setSuffix(qsHours);
}

void ZOR_Form_Config_Transfer_SrvAlg::setDefaultParam()
{
    for (Sim& sim : m_sims) {
        sim.bind.setDefaults();
        sim.lpBList->setDefaultParam();
        sim.lpWList->setDefaultParam();
    }
    m_rules.setDefaults();
    m_roam.setDefaults();
    slot_changed_DataStates();
}

void ZOR_Form_Config_Transfer_SrvAlg::readSim(int nIndex, CXMLWorkData* lpNode)
{
    const bool bSkipRoaming = nIndex == 0 && m_nRoamingReadMode != 0 && m_nRoamingReadMode != 1;
    for (const ZOR_FormBinding::Row& row : m_sims[nIndex].bind.rows()) {
        if (bSkipRoaming && isRoamingValue(row.attr))
            continue;
        QString qsValue;
        lpNode->readString(row.attr.constData(), QString(), qsValue);
        ZOR_FormBinding::showValue(row, qsValue);
    }
}

void ZOR_Form_Config_Transfer_SrvAlg::readFormParam(CXMLWorkData* lpParent)
{
    for (int i = 0; i < simCount(); ++i) {
        if (auto node = ZOR_SettingsNode::openForRead(lpParent, ZOR_SettingsNode::name("SIM", i + 1, "RULES")))
            readSim(i, node.get());
        for (const auto& list : listNodes(i))
            if (auto node = ZOR_SettingsNode::openForRead(lpParent, list.second))
                list.first->readFormParam(node.get());
    }
    if (auto node = ZOR_SettingsNode::openForRead(lpParent, QStringLiteral("RULES")))
        m_rules.read(node.get());
    if (auto node = ZOR_SettingsNode::openForRead(lpParent, QStringLiteral("ROAM")))
        m_roam.read(node.get());
    slot_changed_DataStates();
}

void ZOR_Form_Config_Transfer_SrvAlg::writeFormParam(CXMLWorkData* lpParent)
{
    for (int i = 0; i < simCount(); ++i) {
        m_sims[i].bind.writeNode(lpParent, ZOR_SettingsNode::name("SIM", i + 1, "RULES"));
        for (const auto& list : listNodes(i))
            list.first->writeFormParam(ZOR_SettingsNode::openForWrite(lpParent, list.second).get());
    }
    m_rules.writeNode(lpParent, QStringLiteral("RULES"));
    m_roam.writeNode(lpParent, QStringLiteral("ROAM"));
}

// The list dialogs of one SIM with the nodes the page opens for them.
QVector<QPair<ZOR_Form_Config*, QString>> ZOR_Form_Config_Transfer_SrvAlg::listNodes(int nIndex) const
{
    const Sim& sim = m_sims[nIndex];
    return {{sim.lpBList, sim.lpBList->nodeName()}, {sim.lpWList, sim.lpWList->nodeName()}};
}

void ZOR_Form_Config_Transfer_SrvAlg::applyProfile(const ZOR_TerminalProfile& profile)
{
    setDeviceUseTwoSim(profile.nSimCount >= 2);
}

void ZOR_Form_Config_Transfer_SrvAlg::setDeviceUseTwoSim(bool bUseTwoSim)
{
    m_bTwoSim = bUseTwoSim;
    ui->tabSims->setTabVisible(1, m_bTwoSim);
    if (!m_bTwoSim) {
        m_sims[1].lpBList->hide();
        m_sims[1].lpWList->hide();
    }
    slot_changed_DataStates();
}

void ZOR_Form_Config_Transfer_SrvAlg::setRoamingReadMode(int nMode)
{
    m_nRoamingReadMode = nMode;
    bindSim(0);
}

ZOR_Form_Config_Transfer_SrvAlg_BList* ZOR_Form_Config_Transfer_SrvAlg::blackList(int nSim) const
{
    return nSim >= 1 && nSim <= nSimMax ? m_sims[nSim - 1].lpBList : nullptr;
}

ZOR_Form_Config_Transfer_SrvAlg_WList* ZOR_Form_Config_Transfer_SrvAlg::whiteList(int nSim) const
{
    return nSim >= 1 && nSim <= nSimMax ? m_sims[nSim - 1].lpWList : nullptr;
}

QWidget* ZOR_Form_Config_Transfer_SrvAlg::simPage(int nSim) const
{
    return nSim == 1 ? ui->tabSim1 : nSim == 2 ? ui->tabSim2 : nullptr;
}

void ZOR_Form_Config_Transfer_SrvAlg::slot_changed_DataStates()
{
    bool bAlways = false, bHomePeriod = false, bRoaming = false, bRoamPeriod = false, bRoamOneMessage = false,
         bAnyData = false;
    for (int i = 0; i < simCount(); ++i) {
        const int nHome = stateOf(m_homeStates, m_sims[i].ui->comboCnctH);
        const int nRoam = stateOf(m_roamStates, m_sims[i].ui->comboCnctR);
        bAlways = bAlways || nHome == 1 || nRoam == 1;
        bHomePeriod = bHomePeriod || nHome == 2;
        bRoaming = bRoaming || nRoam != 0;
        bRoamPeriod = bRoamPeriod || nRoam == 2;
        bRoamOneMessage = bRoamOneMessage || nRoam == 3;
        bAnyData = bAnyData || nHome != 0 || nRoam != 0;
    }
    for (QWidget* w : {static_cast<QWidget*>(ui->labelPingTimer), static_cast<QWidget*>(ui->spinPingTimer),
             static_cast<QWidget*>(ui->checkTelAddPing)})
        w->setEnabled(bAlways);
    for (QWidget* w : {static_cast<QWidget*>(ui->labelCnctTimer), static_cast<QWidget*>(ui->widgetCnctTimer),
             static_cast<QWidget*>(ui->checkCoercCnct)})
        w->setEnabled(bHomePeriod);
    for (QWidget* w : {static_cast<QWidget*>(ui->checkNoPriorMsg), static_cast<QWidget*>(ui->checkNoCur),
             static_cast<QWidget*>(ui->checkGroup), static_cast<QWidget*>(ui->checkUseCmd),
             static_cast<QWidget*>(ui->labelBlockTimer), static_cast<QWidget*>(ui->widgetBlockTimer)})
        w->setEnabled(bAnyData);
    ui->spinGrpTimer->setEnabled(bAnyData && ui->checkGroup->isChecked());
    ui->groupRoam->setEnabled(bRoaming);
    ui->labelRoamCnctTimer->setEnabled(bRoamPeriod);
    ui->spinRoamCnctTimer->setEnabled(bRoamPeriod);
    for (QWidget* w : {static_cast<QWidget*>(ui->labelRoamMoveTimer), static_cast<QWidget*>(ui->spinRoamMoveTimer),
             static_cast<QWidget*>(ui->labelRoamStopTimer), static_cast<QWidget*>(ui->spinRoamStopTimer)})
        w->setEnabled(bRoamOneMessage);
}
