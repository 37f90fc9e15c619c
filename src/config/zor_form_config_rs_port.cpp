#include "config/zor_form_config_rs_port.h"

#include "config/zor_form_config_rs_param_axis.h"
#include "config/zor_form_config_rs_param_canfms.h"
#include "config/zor_form_config_rs_param_canlog.h"
#include "config/zor_form_config_rs_param_ddu.h"
#include "config/zor_form_config_rs_param_dtacan.h"
#include "config/zor_form_config_rs_param_dv01.h"
#include "config/zor_form_config_rs_param_flds_rs232.h"
#include "config/zor_form_config_rs_param_flds_rs485.h"
#include "config/zor_form_config_rs_param_hrps.h"
#include "config/zor_form_config_rs_param_mdbs.h"
#include "config/zor_form_config_rs_param_notuse.h"
#include "config/zor_form_config_rs_param_pcnt.h"
#include "config/zor_form_config_rs_param_refr.h"
#include "config/zor_form_config_rs_param_rfid.h"
#include "config/zor_form_config_rs_param_tach.h"
#include "config/zor_form_config_rs_param_tpms.h"
#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <memory>

namespace {

template <typename Page>
ZOR_Form_Config_RS_Param* make(QWidget* parent)
{
    return new Page(parent);
}
using Factory = ZOR_Form_Config_RS_Param* (*)(QWidget*);

struct KindRow
{
    int nKind;
    const char* lpCaptionKey;
    Factory rs232; // null: not offered on RS-232
    Factory rs485; // null: not offered on RS-485
};

// Bus devices with addresses (Modbus slaves, passenger counters, the
// address-keyed controllers) are offered on RS-485 only.
const KindRow kKinds[] = {
    {ZOR_Form_Config_RS_Port::KindNone, "cfgrs_010", &make<ZOR_Form_Config_RS_Param_NotUse>,
        &make<ZOR_Form_Config_RS_Param_NotUse>},
    {ZOR_Form_Config_RS_Port::KindFuel, "cfgrs_011", &make<ZOR_Form_Config_RS_Param_Flds_RS232>,
        &make<ZOR_Form_Config_RS_Param_Flds_RS485>},
    {ZOR_Form_Config_RS_Port::KindModbus, "cfgrs_012", nullptr, &make<ZOR_Form_Config_RS_Param_Mdbs>},
    {ZOR_Form_Config_RS_Port::KindPassengers, "cfgrs_013", nullptr, &make<ZOR_Form_Config_RS_Param_Pcnt>},
    {ZOR_Form_Config_RS_Port::KindRefrigerator, "cfgrs_014", &make<ZOR_Form_Config_RS_Param_Refr>,
        &make<ZOR_Form_Config_RS_Param_Refr>},
    {ZOR_Form_Config_RS_Port::KindRfid, "cfgrs_015", &make<ZOR_Form_Config_RS_Param_Rfid>,
        &make<ZOR_Form_Config_RS_Param_Rfid>},
    {ZOR_Form_Config_RS_Port::KindTachograph, "cfgrs_016", &make<ZOR_Form_Config_RS_Param_Tach>,
        &make<ZOR_Form_Config_RS_Param_Tach>},
    {ZOR_Form_Config_RS_Port::KindTyres, "cfgrs_017", &make<ZOR_Form_Config_RS_Param_Tpms>,
        &make<ZOR_Form_Config_RS_Param_Tpms>},
    {ZOR_Form_Config_RS_Port::KindDisplay, "cfgrs_018", &make<ZOR_Form_Config_RS_Param_DDU>,
        &make<ZOR_Form_Config_RS_Param_DDU>},
    {ZOR_Form_Config_RS_Port::KindAxis, "cfgrs_019", nullptr, &make<ZOR_Form_Config_RS_Param_Axis>},
    {ZOR_Form_Config_RS_Port::KindDataCan, "cfgrs_020", nullptr, &make<ZOR_Form_Config_RS_Param_DtaCan>},
    {ZOR_Form_Config_RS_Port::KindDv01, "cfgrs_021", nullptr, &make<ZOR_Form_Config_RS_Param_Dv01>},
    {ZOR_Form_Config_RS_Port::KindCanLog, "cfgrs_022", &make<ZOR_Form_Config_RS_Param_CanLog>,
        &make<ZOR_Form_Config_RS_Param_CanLog>},
    {ZOR_Form_Config_RS_Port::KindCanFms, "cfgrs_023", &make<ZOR_Form_Config_RS_Param_CanFms>,
        &make<ZOR_Form_Config_RS_Param_CanFms>},
    {ZOR_Form_Config_RS_Port::KindHrps, "cfgrs_024", &make<ZOR_Form_Config_RS_Param_Hrps>,
        &make<ZOR_Form_Config_RS_Param_Hrps>},
};
// The pages are indexed by kind code: as many slots as the largest code needs.
int kindCodes()
{
    int n = 0;
    for (const KindRow& row : kKinds)
        n = qMax(n, row.nKind + 1);
    return n;
}

// A port saves only the settings of its chosen device: the user agrees
// before another device's settings stop going into the file.
bool agreeToLeave(QWidget* lpParent, const QString& qsOld, const QString& qsNew)
{
    return QMessageBox::question(
               lpParent, zorTr(QStringLiteral("cfgrs_078")), zorTr(QStringLiteral("cfgrs_079")).arg(qsOld, qsNew))
        == QMessageBox::Yes;
}

} // namespace

ZOR_Form_Config_RS_Port::ZOR_Form_Config_RS_Port(QWidget* parent, Interface which)
    : ZOR_Form_Config(parent)
    , m_interface(which)
    , m_parities(ZOR_CaptionList()
                     .add(QStringLiteral("None"), QStringLiteral("cfgrs_007"))
                     .add(QStringLiteral("Even"), QStringLiteral("cfgrs_008"))
                     .add(QStringLiteral("Odd"), QStringLiteral("cfgrs_009")))
    , m_stops(ZOR_CaptionList()
                  .addText(QStringLiteral("1"), QStringLiteral("1"))
                  .addText(QStringLiteral("2"), QStringLiteral("2")))
{
    for (const char* lpSpeed : {"1200", "2400", "4800", "9600", "19200", "38400", "57600", "115200"})
        m_speeds.addText(QLatin1String(lpSpeed), QLatin1String(lpSpeed));

    auto box = new QVBoxLayout(this);
    auto grid = new QGridLayout;
    box->addLayout(grid);
    auto addCaptioned = [this, grid](int nRow, int nColumn, const char* lpKey, QComboBox*& lpBox) {
        auto label = new QLabel(this);
        m_captions.append({label, QLatin1String(lpKey)});
        lpBox = new QComboBox(this);
        grid->addWidget(label, nRow, nColumn);
        grid->addWidget(lpBox, nRow, nColumn + 1);
    };
    addCaptioned(0, 0, "cfgrs_003", m_lpKind);
    addCaptioned(1, 0, "cfgrs_004", m_lpSpeed);
    addCaptioned(1, 2, "cfgrs_005", m_lpParity);
    addCaptioned(1, 4, "cfgrs_006", m_lpStop);
    grid->setColumnStretch(6, 1);
    m_lpStack = new QStackedWidget(this);
    m_stack.attach(m_lpStack, this);
    box->addWidget(m_lpStack);
    box->addStretch();

    m_pages.fill(nullptr, kindCodes());
    for (const KindRow& row : kKinds) {
        const Factory factory = which == RS232 ? row.rs232 : row.rs485;
        if (!factory)
            continue;
        m_kinds.add(QString::number(row.nKind), QLatin1String(row.lpCaptionKey));
        ZOR_Form_Config_RS_Param* lpPage = factory(m_lpStack);
        m_pages[row.nKind] = lpPage;
        m_stack.addPage(row.nKind, lpPage);
        connect(lpPage, &ZOR_Form_Config_RS_Param::changeRs_Settings, this,
            &ZOR_Form_Config_RS_Port::slot_changeRs_Settings);
        // The pages' own edits mark the document as changed too.
        connect(lpPage, &ZOR_Form_Config::signal_FormEdited, this, &ZOR_Form_Config::signal_FormEdited);
        connect(lpPage, &ZOR_Form_Config_RS_Param::openTab, this,
            [this] { emit signal_ShowPage(QStringLiteral("protocol"), QStringLiteral("User")); });
    }
    m_device.caption("device", m_lpKind, &m_kinds, QStringLiteral("0"));
    m_line.caption("speed", m_lpSpeed, &m_speeds, QStringLiteral("9600"))
        .caption("parity", m_lpParity, &m_parities, QStringLiteral("None"))
        .caption("stop", m_lpStop, &m_stops, QLatin1String(ZOR_Form_Config_RS_Param::qsStopBitDefault));
    translateForm();
    auto previous = std::make_shared<int>(0);
    connect(m_lpKind, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, previous] {
        *previous = m_stack.shownKind();
        showKind(currentKind());
    });
    // Only the user's own choice asks (activated), never a load.
    connect(m_lpKind, QOverload<int>::of(&QComboBox::activated), this, [this, previous] {
        const int nOld = *previous;
        if (nOld != KindNone && nOld != currentKind()
            && !agreeToLeave(this, m_kinds.captionOf(QString::number(nOld)), m_lpKind->currentText()))
            setCurrentKind(nOld);
    });
    setDefaultParam();
    // The pages watch their own editors; only the port's controls here.
    for (QComboBox* lpBox : {m_lpKind, m_lpSpeed, m_lpParity, m_lpStop})
        connect(lpBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ZOR_Form_Config::signal_FormEdited);
}

QString ZOR_Form_Config_RS_Port::nodeName() const
{
    return m_interface == RS232 ? QStringLiteral("RS232") : QStringLiteral("RS485");
}

QVector<int> ZOR_Form_Config_RS_Port::kinds() const
{
    QVector<int> list;
    for (int i = 0; i < m_kinds.count(); ++i)
        list.append(m_kinds.code(i).toInt());
    return list;
}

int ZOR_Form_Config_RS_Port::currentKind() const
{
    return m_kinds.currentCode(m_lpKind).toInt();
}

void ZOR_Form_Config_RS_Port::setCurrentKind(int nKind)
{
    m_kinds.select(m_lpKind, QString::number(nKind));
}

ZOR_Form_Config_RS_Param* ZOR_Form_Config_RS_Port::page(int nKind) const
{
    return m_pages.value(nKind, nullptr);
}

QString ZOR_Form_Config_RS_Port::speed() const
{
    return m_speeds.currentCode(m_lpSpeed);
}
QString ZOR_Form_Config_RS_Port::parity() const
{
    return m_parities.currentCode(m_lpParity);
}
QString ZOR_Form_Config_RS_Port::stopBits() const
{
    return m_stops.currentCode(m_lpStop);
}

void ZOR_Form_Config_RS_Port::showKind(int nKind)
{
    if (!m_stack.show(nKind))
        return;
    if (ZOR_Form_Config_RS_Param* lpPage = shownPage())
        lpPage->updateRs_Settings();
}

void ZOR_Form_Config_RS_Port::slot_changeRs_Settings(
    QWidget* lpWnd, QString qsSpeed, QString qsParity, QString qsStopBit)
{
    if (!m_stack.isShown(lpWnd))
        return;
    m_speeds.select(m_lpSpeed, qsSpeed);
    m_parities.select(m_lpParity, qsParity);
    m_stops.select(m_lpStop, qsStopBit);
}

void ZOR_Form_Config_RS_Port::translateForm()
{
    for (const auto& caption : qAsConst(m_captions))
        caption.first->setText(zorTr(caption.second));
    m_kinds.fill(m_lpKind);
    m_speeds.fill(m_lpSpeed);
    m_parities.fill(m_lpParity);
    m_stops.fill(m_lpStop);
    for (ZOR_Form_Config_RS_Param* lpPage : qAsConst(m_pages))
        if (lpPage)
            lpPage->translateForm();
}

void ZOR_Form_Config_RS_Port::setDefaultParam()
{
    m_device.setDefaults();
    showKind(currentKind());
    m_line.setDefaults();
    for (ZOR_Form_Config_RS_Param* lpPage : qAsConst(m_pages))
        if (lpPage)
            lpPage->setDefaultParam();
}

void ZOR_Form_Config_RS_Port::setFormEnabled(bool bEnabled)
{
    setEnabled(bEnabled);
    for (ZOR_Form_Config_RS_Param* lpPage : qAsConst(m_pages))
        if (lpPage)
            lpPage->setFormEnabled(bEnabled);
}

void ZOR_Form_Config_RS_Port::readFormParam(CXMLWorkData* lpRoot)
{
    const auto node = ZOR_SettingsNode::openForRead(lpRoot, nodeName());
    if (!node)
        return;
    m_device.read(node.get());
    if (ZOR_Form_Config_RS_Param* lpPage = shownPage())
        lpPage->readPortParam(node.get());
    // What was saved wins over what the device page asked for while loading.
    m_line.read(node.get());
}

void ZOR_Form_Config_RS_Port::writeFormParam(CXMLWorkData* lpRoot)
{
    const auto node = ZOR_SettingsNode::openForWrite(lpRoot, nodeName());
    m_device.write(node.get());
    m_line.write(node.get());
    node->writeParameters();
    if (ZOR_Form_Config_RS_Param* lpPage = shownPage())
        lpPage->writePortParam(node.get());
}
