#include "config/zor_form_config_set_kite3.h"
#include "ui_zor_form_config_set_kite3.h"

#include "config/zor_configproblems.h"
#include "config/zor_form_config_set_kite3_tab_accel.h"
#include "config/zor_form_config_set_kite3_tab_can.h"
#include "config/zor_form_config_set_kite3_tab_ffs.h"
#include "config/zor_form_config_set_kite3_tab_main.h"
#include "config/zor_form_config_set_kite3_tab_more.h"
#include "config/zor_form_config_set_kite3_tab_navi.h"
#include "config/zor_form_config_set_kite3_tab_refr.h"
#include "config/zor_form_config_set_kite3_tab_rs.h"
#include "config/zor_form_config_set_kite3_tab_taho.h"
#include "config/zor_form_config_set_kite3_tab_user.h"
#include "config/zor_terminalprofile.h"
#include "module/zor_language.h"
#include "store/zor_settingsnode.h"
#include "telemetry/zor_tmi_table.h"

#include <QStyle>

namespace {

const QString kVersion1 = QStringLiteral("10");
const QString kVersion2 = QStringLiteral("20");
const QString kVersion3 = QStringLiteral("30");
// Record number, event code and time: every record starts with them.
const QString kMaskStart = QStringLiteral("111");

// The mask has 255 characters, one more than a parameter record of the
// store holds.
const QString kMaskAttr = QStringLiteral("mask");

// Tells a check what the loaded mask became: cut or padded to 255 positions,
// or a record the terminal would refuse.
void noteMask(CXMLWorkData* lpKite, const QString& qsMask, const QString& qsKept, int nSize, QWidget* lpWidget)
{
    ZOR_ConfigProblems* lpProblems = ZOR_ConfigProblems::active();
    if (!lpProblems || qsMask.isEmpty())
        return;
    QString qsReason;
    if (nSize > ZOR_Form_Config_Set_Kite3::nMaxRecordSize)
        qsReason = QStringLiteral("the record takes %1 bytes, over the terminal's limit of %2")
                       .arg(nSize)
                       .arg(ZOR_Form_Config_Set_Kite3::nMaxRecordSize);
    else if (qsMask != qsKept)
        qsReason = QStringLiteral("not %1 positions of 0 and 1").arg(qsKept.size());
    if (!qsReason.isEmpty())
        lpProblems->note(lpKite->getTag(), kMaskAttr, qsMask, qsKept, qsReason, lpWidget);
}

} // namespace

template <typename F>
void ZOR_Form_Config_Set_Kite3::bulk(F change)
{
    ++m_nBulk;
    change();
    if (--m_nBulk > 0)
        return;
    m_nCurSize = 0;
    for (const ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
        m_nCurSize += lpTab->protocolSize();
    setFormatSize();
}

ZOR_Form_Config_Set_Kite3::ZOR_Form_Config_Set_Kite3(QWidget* parent)
    : ZOR_Form_Config(parent)
    , ui(new Ui::ZOR_Form_Config_Set_Kite3)
{
    ui->setupUi(this);
    initForm();
    translateForm();
    bulk([] {});
    watchEdits(this);
}

ZOR_Form_Config_Set_Kite3::~ZOR_Form_Config_Set_Kite3() = default;

void ZOR_Form_Config_Set_Kite3::initForm()
{
    // The order in which the mask is built (Main first, User last).
    m_lpUser = new ZOR_Form_Config_Set_Kite3_Tab_User(this);
    m_tabs = {new ZOR_Form_Config_Set_Kite3_Tab_Main(this), new ZOR_Form_Config_Set_Kite3_Tab_Navi(this),
        new ZOR_Form_Config_Set_Kite3_Tab_RS(this), new ZOR_Form_Config_Set_Kite3_Tab_CAN(this),
        new ZOR_Form_Config_Set_Kite3_Tab_Taho(this), new ZOR_Form_Config_Set_Kite3_Tab_Accel(this),
        new ZOR_Form_Config_Set_Kite3_Tab_Refr(this), new ZOR_Form_Config_Set_Kite3_Tab_FFS(this),
        new ZOR_Form_Config_Set_Kite3_Tab_More(this), m_lpUser};
    for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs)) {
        lpTab->setTabIndex(ui->tabWidget->addTab(lpTab, lpTab->tabName()));
        connect(lpTab, &ZOR_Form_Config_Set_Kite3_Tab::signal_ProtocolSize_Changed, this,
            [this](int nDelta) { nDelta >= 0 ? setProtocol_CurSize_Inc(nDelta) : setProtocol_CurSize_Dec(-nDelta); });
    }
    m_versions.addText(kVersion1, QStringLiteral("KITE 1.0"))
        .addText(kVersion2, QStringLiteral("KITE 2.0"))
        .addText(kVersion3, QStringLiteral("KITE 3.0"));
    m_versions.fill(ui->comboBox_FlashFormat);
    m_versions.select(ui->comboBox_FlashFormat, kVersion3);
    connect(ui->comboBox_FlashFormat, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Config_Set_Kite3::slot_currentIndexChanged_FlashFormat);
    ui->label_WarningIcon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(24, 24));
    ui->frame_Warning->hide();
}

void ZOR_Form_Config_Set_Kite3::translateForm()
{
    setWindowTitle(zorTr(QStringLiteral("cfgkt_002")));
    ui->label_Title->setText(zorTr(QStringLiteral("cfgkt_002")));
    ui->label_FlashFormat->setText(zorTr(QStringLiteral("cfgkt_003")));
    ui->label_SizeCaption->setText(zorTr(QStringLiteral("cfgkt_004")));
    ui->label_Warning->setText(zorTr(QStringLiteral("cfgkt_005")).arg(nMaxRecordSize));
    m_versions.fill(ui->comboBox_FlashFormat);
    for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs)) {
        lpTab->translateForm();
        ui->tabWidget->setTabText(lpTab->getTabIndex(), lpTab->getTabTitle());
    }
}

void ZOR_Form_Config_Set_Kite3::deviceConnect()
{
    for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
        lpTab->deviceConnect();
}

void ZOR_Form_Config_Set_Kite3::deviceDisconnect()
{
    for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
        lpTab->deviceDisconnect();
}

void ZOR_Form_Config_Set_Kite3::setFormEnabled(bool bEnabled)
{
    setEnabled(bEnabled);
}

void ZOR_Form_Config_Set_Kite3::setDefaultParam()
{
    bulk([this] {
        setTypeDFProtocol(kVersion3);
        for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
            lpTab->setDefaultParam();
    });
}

QString ZOR_Form_Config_Set_Kite3::getStrFormat() const
{
    QString qsMask = kMaskStart.leftJustified(ZorTmi::FieldCount, QLatin1Char('0'));
    for (const ZOR_Form_Config_Set_Kite3_Tab* lpTab : m_tabs)
        lpTab->getStrFormat_Kite_1(qsMask);
    for (const ZOR_Form_Config_Set_Kite3_Tab* lpTab : m_tabs)
        lpTab->getStrFormat_Kite_2(qsMask);
    for (const ZOR_Form_Config_Set_Kite3_Tab* lpTab : m_tabs)
        lpTab->getStrFormat_Kite_3(qsMask);
    return qsMask;
}

void ZOR_Form_Config_Set_Kite3::setStrFormat(const QString& qsMask)
{
    bulk([&] {
        for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
            lpTab->setStrFormat_Kite_1(qsMask);
        for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
            lpTab->setStrFormat_Kite_2(qsMask);
        for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
            lpTab->setStrFormat_Kite_3(qsMask);
    });
}

QString ZOR_Form_Config_Set_Kite3::getTypeDFProtocol() const
{
    return m_versions.code(ui->comboBox_FlashFormat->currentIndex());
}

void ZOR_Form_Config_Set_Kite3::setTypeDFProtocol(const QString& qsFormat)
{
    const QString qsCode = (qsFormat == kVersion1 || qsFormat == kVersion2) ? qsFormat : kVersion3;
    ui->comboBox_FlashFormat->setCurrentIndex(m_versions.indexOfCode(qsCode));
}

void ZOR_Form_Config_Set_Kite3::slot_currentIndexChanged_FlashFormat(int nIndex)
{
    const QString qsCode = m_versions.code(nIndex);
    bulk([&] {
        for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs)) {
            lpTab->setFormat_Enabled_Kite_2(qsCode != kVersion1);
            lpTab->setFormat_Enabled_Kite_3(qsCode == kVersion3);
        }
    });
}

void ZOR_Form_Config_Set_Kite3::setProtocol_CurSize_Inc(int nSize)
{
    m_nCurSize += nSize;
    if (m_nBulk == 0)
        setFormatSize();
}

void ZOR_Form_Config_Set_Kite3::setProtocol_CurSize_Dec(int nSize)
{
    m_nCurSize -= nSize;
    if (m_nBulk == 0)
        setFormatSize();
}

void ZOR_Form_Config_Set_Kite3::setFormatSize()
{
    ui->label_Size->setText(QString::number(m_nCurSize));
    const bool bExcess = m_nCurSize > nMaxRecordSize;
    QPalette palette = ui->label_SizeCaption->palette();
    if (bExcess)
        palette.setColor(QPalette::WindowText, Qt::red);
    ui->label_Size->setPalette(palette);
    ui->frame_Warning->setVisible(bExcess);
    m_lpUser->setFormEnabled(!bExcess);
    if (bExcess == m_bExcess)
        return;
    m_bExcess = bExcess;
    emit signal_Excess_Size(bExcess);
}

void ZOR_Form_Config_Set_Kite3::readFormParam(CXMLWorkData* lpRoot)
{
    const auto lpProtocol = ZOR_SettingsNode::openForRead(lpRoot, QStringLiteral("PROTOCOL"));
    if (!lpProtocol)
        return;
    bulk([&] {
        if (const auto lpKite = ZOR_SettingsNode::openForRead(lpProtocol.get(), QStringLiteral("KITE"))) {
            QString qsFormat;
            lpKite->readString("format", getTypeDFProtocol(), qsFormat);
            setTypeDFProtocol(qsFormat);
            const QString qsMask = ZOR_SettingsNode::readLongText(lpKite.get(), kMaskAttr);
            setStrFormat(qsMask.isEmpty() ? getStrFormat() : qsMask);
        }
        for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
            lpTab->readFormParam(lpProtocol.get());
    });
    const auto lpKite = ZOR_SettingsNode::openForRead(lpProtocol.get(), QStringLiteral("KITE"));
    ZOR_ConfigProblems* lpProblems = ZOR_ConfigProblems::active();
    if (!lpKite || !lpProblems)
        return;
    // The version and the record size stand for the field set in a check,
    // a search and the settings sheet.
    ui->label_SizeCaption->setBuddy(ui->label_Size);
    lpProblems->noteRead(lpKite->getTag(), QStringLiteral("format"), ui->comboBox_FlashFormat);
    lpProblems->noteRead(lpKite->getTag(), kMaskAttr, ui->label_Size);
    noteMask(lpKite.get(), ZOR_SettingsNode::readLongText(lpKite.get(), kMaskAttr), getStrFormat(),
        getProtocol_CurSize(), ui->label_Size);
}

void ZOR_Form_Config_Set_Kite3::writeFormParam(CXMLWorkData* lpRoot)
{
    const auto lpProtocol = ZOR_SettingsNode::openForWrite(lpRoot, QStringLiteral("PROTOCOL"));
    lpProtocol->writeString("page", QStringLiteral("PROTOCOL"));
    const auto lpKite = ZOR_SettingsNode::openForWrite(lpProtocol.get(), QStringLiteral("KITE"));
    lpKite->writeString("format", getTypeDFProtocol());
    lpKite->writeParameters();
    ZOR_SettingsNode::writeLongText(lpKite.get(), kMaskAttr, getStrFormat());
    for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
        lpTab->writeFormParam(lpProtocol.get());
    lpProtocol->writeParameters();
}

void ZOR_Form_Config_Set_Kite3::setUserParamRegistry(ZOR_UserParamRegistry* lpRegistry)
{
    m_lpUser->setUserParamRegistry(lpRegistry);
}

bool ZOR_Form_Config_Set_Kite3::showTab(const QString& qsTab)
{
    for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs)) {
        if (lpTab->tabName().compare(qsTab, Qt::CaseInsensitive) == 0) {
            ui->tabWidget->setCurrentWidget(lpTab);
            return true;
        }
    }
    return false;
}

void ZOR_Form_Config_Set_Kite3::applyProfile(const ZOR_TerminalProfile& p)
{
    bulk([&] {
        setDeviceUseState(p.bUseState);
        setDeviceUseModule(p.bUseModule);
        setDeviceUseGSM(p.bUseGSM);
        setDeviceUseMotochas(p.bUseMotochas);
        setDeviceUsePowerBLE(p.bUsePowerBLE);
        setMaxCountLinesOut(p.nMaxCountLinesOut);
        setMaxCountStateIn(p.nMaxCountStateIn);
        setMaxCountLinesIn(p.nMaxCountLinesIn);
        setMaxCountLines_AIn(p.nMaxCountLinesAIn);
        setMaxCountSensorsTemp(p.nMaxCountSensorsTemp);
        setRS485_FLS_MaxCount(p.nRS485FlsMaxCount);
        setDeviceUseCANState(p.bUseCANState);
        setUseDrivingQuality(p.bUseDrivingQuality);
        setDeviceUsePassager(p.bUsePassager);
        setDeviceUseTires(p.bUseTires);
        setDeviceUseDisp(p.bUseDisp);
        setDeviceUseVAccelAxels(p.bUseVAccelAxels);
        setDeviceUseAinf(p.bUseAinf);
        setDeviceUseCamera(p.bUseCamera);
        setMaxCountHighPrecisionTemp(p.nMaxCountHighPrecisionTemp);
        setMaxCountHighPrecisionHumidity(p.nMaxCountHighPrecisionHumidity);
        setDeviceUseLBS(p.bUseLBS);
        setDeviceUseNaviMore(p.bUseNaviMore);
    });
}

void ZOR_Form_Config_Set_Kite3::setFieldLimit(int nFirst, int nLimit)
{
    bulk([&] {
        for (ZOR_Form_Config_Set_Kite3_Tab* lpTab : qAsConst(m_tabs))
            if (lpTab->setFieldLimit(nFirst, nLimit))
                return;
    });
}

void ZOR_Form_Config_Set_Kite3::setFieldsUsable(std::initializer_list<int> fields, bool bUse)
{
    for (int nField : fields)
        setFieldLimit(nField, bUse ? ZorTmi::FieldCount : 0);
}

void ZOR_Form_Config_Set_Kite3::setLinesUsable(std::initializer_list<int> fields, int nPerBox, int nLines)
{
    int nFirstLine = 1;
    for (int nField : fields) {
        setFieldLimit(nField, nLines >= nFirstLine ? 1 : 0);
        nFirstLine += nPerBox;
    }
}

// The fields each capability stands for.
void ZOR_Form_Config_Set_Kite3::setDeviceUseState(bool bUse)
{
    setFieldsUsable({4, 123}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseModule(bool bUse)
{
    setFieldsUsable({5, 6, 124}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseGSM(bool bUse)
{
    setFieldsUsable({7, 125}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseMotochas(bool bUse)
{
    setFieldsUsable({37, 205, 206}, bUse);
}
// A terminal without its own backup battery has no backup supply to report.
void ZOR_Form_Config_Set_Kite3::setDeviceUsePowerBLE(bool bUse)
{
    setFieldsUsable({20}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setMaxCountLinesOut(int nCount)
{
    setLinesUsable({31, 32}, 8, nCount);
}
void ZOR_Form_Config_Set_Kite3::setMaxCountStateIn(int nCount)
{
    setLinesUsable({29, 30, 126}, 8, nCount);
}
void ZOR_Form_Config_Set_Kite3::setMaxCountLinesIn(int nCount)
{
    setLinesUsable({33, 34, 127, 128, 129, 130, 131, 132}, 1, nCount);
    setLinesUsable({35, 36, 133, 134, 135, 136, 137, 138}, 1, nCount);
}
void ZOR_Form_Config_Set_Kite3::setMaxCountLines_AIn(int nCount)
{
    setLinesUsable({21, 22, 23, 24, 25, 26, 27, 28}, 1, nCount);
}
void ZOR_Form_Config_Set_Kite3::setMaxCountSensorsTemp(int nCount)
{
    setLinesUsable({45, 46, 47, 48, 49, 50, 51, 52}, 1, nCount);
}
void ZOR_Form_Config_Set_Kite3::setRS485_FLS_MaxCount(int nCount)
{
    setLinesUsable({38, 39, 40, 41, 42, 43, 84, 85, 86, 87, 88, 89, 90, 91, 92, 93}, 1, nCount);
    setLinesUsable({78, 79, 80, 81, 82, 83}, 1, nCount);
    setLinesUsable({147, 148, 149, 150, 151, 152, 153, 154, 155, 156, 157, 158, 159, 160, 161, 162}, 1, nCount);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseCANState(bool bUse)
{
    setFieldsUsable({201, 202, 203, 204}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setUseDrivingQuality(bool bUse)
{
    setFieldsUsable({143, 144, 145, 146}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUsePassager(bool bUse)
{
    setFieldsUsable({110}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseTires(bool bUse)
{
    setFieldsUsable({94}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseDisp(bool bUse)
{
    setFieldsUsable({104, 105}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseVAccelAxels(bool bUse)
{
    setFieldsUsable({142}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseAinf(bool bUse)
{
    setFieldsUsable({118, 119, 120, 121}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseCamera(bool bUse)
{
    setFieldsUsable({122}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setMaxCountHighPrecisionTemp(int nCount)
{
    setFieldLimit(163, nCount);
}
void ZOR_Form_Config_Set_Kite3::setMaxCountHighPrecisionHumidity(int nCount)
{
    setFieldLimit(167, nCount);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseLBS(bool bUse)
{
    setFieldsUsable({77}, bUse);
}
void ZOR_Form_Config_Set_Kite3::setDeviceUseNaviMore(bool bUse)
{
    setFieldsUsable({70, 71, 72, 73, 74, 75, 76}, bUse);
}
