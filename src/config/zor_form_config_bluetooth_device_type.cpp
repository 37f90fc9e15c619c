#include "config/zor_form_config_bluetooth_device_type.h"

#include "config/zor_form_config_ble_devtype_ain.h"
#include "config/zor_form_config_ble_devtype_as.h"
#include "config/zor_form_config_ble_devtype_axs.h"
#include "config/zor_form_config_ble_devtype_fls.h"
#include "config/zor_form_config_ble_devtype_fw.h"
#include "config/zor_form_config_ble_devtype_hs.h"
#include "config/zor_form_config_ble_devtype_temp.h"
#include "config/zor_form_config_ble_devtype_uni.h"
#include "config/zor_form_config_ble_devtype_us.h"
#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

struct TypeRow
{
    int nHeight;
    const char* lpCaptionKey;
    // 1 or 0: the slot shows a sensor name; -1: the page decides.
    int nSensorName;
};

// By BLUETOOTH_DEVICE_TYPE code.
const TypeRow kTypes[BLE_DEVTYPE_COUNT] = {
    {10, "cfgble_030", 0},
    {100, "cfgble_031", -1},
    {70, "cfgble_032", -1},
    {70, "cfgble_033", -1},
    {70, "cfgble_034", 0},
    {70, "cfgble_035", 0},
    {560, "cfgble_036", 1},
    {70, "cfgble_037", -1},
    {70, "cfgble_038", -1},
    {70, "cfgble_039", 1},
};

BLUETOOTH_DEVICE_TYPE checkedType(int nType)
{
    return nType > 0 && nType < BLE_DEVTYPE_COUNT ? BLUETOOTH_DEVICE_TYPE(nType) : BLE_DEVTYPE_NONE;
}

} // namespace

ZOR_Form_Config_Bluetooth_Device_Type::ZOR_Form_Config_Bluetooth_Device_Type(QWidget* parent)
    : ZOR_Form_Config(parent)
    , m_types(deviceTypeCaptions())
{
    initForm();
    translateForm();
    watchEdits(this);
}

int ZOR_Form_Config_Bluetooth_Device_Type::areaHeight(BLUETOOTH_DEVICE_TYPE type)
{
    return kTypes[checkedType(type)].nHeight;
}

ZOR_CaptionList ZOR_Form_Config_Bluetooth_Device_Type::deviceTypeCaptions()
{
    ZOR_CaptionList list;
    for (int i = 0; i < BLE_DEVTYPE_COUNT; ++i)
        list.add(QString::number(i), QLatin1String(kTypes[i].lpCaptionKey));
    return list;
}

void ZOR_Form_Config_Bluetooth_Device_Type::initForm()
{
    auto box = new QVBoxLayout(this);
    box->setContentsMargins(0, 0, 0, 0);
    auto line = new QHBoxLayout;
    m_lpTypeLabel = new QLabel(this);
    m_lpType = new QComboBox(this);
    line->addWidget(m_lpTypeLabel);
    line->addWidget(m_lpType);
    line->addStretch();
    box->addLayout(line);
    m_lpStack = new QStackedWidget(this);
    box->addWidget(m_lpStack);
    box->addStretch();
    m_bind.caption("type", m_lpType, &m_types, QStringLiteral("0"));

    m_pages = {nullptr, new ZOR_Form_Config_Ble_DevType_FLS(m_lpStack), new ZOR_Form_Config_Ble_DevType_Temp(m_lpStack),
        new ZOR_Form_Config_Ble_DevType_AS(m_lpStack), new ZOR_Form_Config_Ble_DevType_AXS(m_lpStack),
        new ZOR_Form_Config_Ble_DevType_FW(m_lpStack), new ZOR_Form_Config_Ble_DevType_Uni(m_lpStack),
        new ZOR_Form_Config_Ble_DevType_US(m_lpStack), new ZOR_Form_Config_Ble_DevType_AIN(m_lpStack),
        new ZOR_Form_Config_Ble_DevType_HS(m_lpStack)};
    m_stack.attach(m_lpStack, this);
    m_stack.addPage(BLE_DEVTYPE_NONE, nullptr);
    for (int i = 1; i < BLE_DEVTYPE_COUNT; ++i) {
        m_stack.addPage(i, m_pages[i]);
        connect(m_pages[i], &ZOR_Form_Config_Ble_DevType::signal_Device_UserParam_Add, this,
            &ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Add);
        connect(m_pages[i], &ZOR_Form_Config_Ble_DevType::signal_Device_UserParam_Del, this,
            &ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Del);
    }

    connectPageSignals();

    connect(m_lpType, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_currentIndexChanged_DeviceType);
    m_types.fill(m_lpType);
    showBluetoothSensorType(BLE_DEVTYPE_NONE);
    m_lpStack->setFixedHeight(areaHeight(BLE_DEVTYPE_NONE));
}

// Index changes and user parameters of the type pages, passed on from the
// shown page.
void ZOR_Form_Config_Bluetooth_Device_Type::connectPageSignals()
{
    auto fls = static_cast<ZOR_Form_Config_Ble_DevType_FLS*>(m_pages[BLE_DEVTYPE_FLS]);
    connect(fls, &ZOR_Form_Config_Ble_DevType_FLS::signal_ChangeIdx_Dev_FS, this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_FS);
    connect(fls, &ZOR_Form_Config_Ble_DevType_FLS::signal_ChangeIdx_Dev_Int_FS, this, [this](int nOld, int nNew) {
        if (fromShownPage())
            emit signal_ChangeIdxFS_Int(nOld, nNew);
    });
    auto temperatureInt = [this](int nOld, int nNew) {
        if (fromShownPage())
            emit signal_ChangeIdxTS_Int(nOld, nNew);
    };
    auto temp = static_cast<ZOR_Form_Config_Ble_DevType_Temp*>(m_pages[BLE_DEVTYPE_TEMP]);
    connect(temp, &ZOR_Form_Config_Ble_DevType_Temp::signal_ChangeIdx_Dev_Temp, this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_Temp);
    connect(temp, &ZOR_Form_Config_Ble_DevType_Temp::signal_ChangeIdx_Dev_Int_Temp, this, temperatureInt);
    // The built-in temperature channels of the combined sensors count as
    // temperature sensors too.
    auto as = static_cast<ZOR_Form_Config_Ble_DevType_AS*>(m_pages[BLE_DEVTYPE_AS]);
    connect(as, &ZOR_Form_Config_Ble_DevType_AS::signal_ChangeIdx_Dev_AS, this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_AS);
    connect(as, &ZOR_Form_Config_Ble_DevType_AS::signal_ChangeIdx_Dev_Int_AS, this, temperatureInt);
    auto axs = static_cast<ZOR_Form_Config_Ble_DevType_AXS*>(m_pages[BLE_DEVTYPE_AXS]);
    connect(axs, &ZOR_Form_Config_Ble_DevType_AXS::signal_ChangeIdx_Dev_AXS, this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_AS);
    connect(axs, &ZOR_Form_Config_Ble_DevType_AXS::signal_ChangeIdx_Dev_Int_AXS, this, temperatureInt);
    auto us = static_cast<ZOR_Form_Config_Ble_DevType_US*>(m_pages[BLE_DEVTYPE_US]);
    connect(us, &ZOR_Form_Config_Ble_DevType_US::signal_ChangeIdx_Dev_US, this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_AS);
    connect(us, &ZOR_Form_Config_Ble_DevType_US::signal_ChangeIdx_Dev_Int_US, this, temperatureInt);
    auto ain = static_cast<ZOR_Form_Config_Ble_DevType_AIN*>(m_pages[BLE_DEVTYPE_AIN]);
    connect(ain, &ZOR_Form_Config_Ble_DevType_AIN::signal_ChangeIdx_Dev_Int_AIN, this, [this](int nOld, int nNew) {
        if (fromShownPage())
            emit signal_ChangeIdxAIN_Int(nOld, nNew);
    });
    auto uni = static_cast<ZOR_Form_Config_Ble_DevType_Uni*>(m_pages[BLE_DEVTYPE_UNI]);
    connect(uni, &ZOR_Form_Config_Ble_DevType_Uni::signal_Device_UserParam_Add_Uni, this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Add_Uni);
    connect(uni, &ZOR_Form_Config_Ble_DevType_Uni::signal_Device_UserParam_Del_Uni, this,
        &ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Del_Uni);
}

bool ZOR_Form_Config_Bluetooth_Device_Type::fromShownPage() const
{
    const QObject* lpSender = sender();
    return !lpSender || m_stack.isShown(lpSender);
}

void ZOR_Form_Config_Bluetooth_Device_Type::setSlotNumber(int nSlot)
{
    m_nSlot = nSlot;
    for (ZOR_Form_Config_Ble_DevType* lpPage : qAsConst(m_pages))
        if (lpPage)
            lpPage->setSlotNumber(nSlot);
}

BLUETOOTH_DEVICE_TYPE ZOR_Form_Config_Bluetooth_Device_Type::deviceType() const
{
    return checkedType(m_types.currentCode(m_lpType).toInt());
}

void ZOR_Form_Config_Bluetooth_Device_Type::setDeviceType(BLUETOOTH_DEVICE_TYPE type)
{
    m_types.select(m_lpType, QString::number(checkedType(type)));
}

void ZOR_Form_Config_Bluetooth_Device_Type::freshen(int nType) const
{
    if (nType < 0 || nType >= m_stale.size() || !m_stale[nType])
        return;
    m_stale[nType] = false;
    if (ZOR_Form_Config_Ble_DevType* lpPage = m_pages[nType]) {
        lpPage->setDefaultParam();
        for (auto it = m_taken.cbegin(); it != m_taken.cend(); ++it)
            lpPage->setTakenIndexes(it.key(), it.value());
    }
}

ZOR_Form_Config_Ble_DevType* ZOR_Form_Config_Bluetooth_Device_Type::page(BLUETOOTH_DEVICE_TYPE type) const
{
    freshen(checkedType(type));
    return m_pages.value(checkedType(type), nullptr);
}

void ZOR_Form_Config_Bluetooth_Device_Type::showBluetoothSensorType(BLUETOOTH_DEVICE_TYPE type)
{
    // The universal sensor's values are offered only while it is shown.
    m_stack.show(checkedType(type));
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_currentIndexChanged_DeviceType(int)
{
    const BLUETOOTH_DEVICE_TYPE type = deviceType();
    if (type == shownType())
        return;
    freshen(type);
    showBluetoothSensorType(type);
    m_lpStack->setFixedHeight(areaHeight(type));
    const int nName = kTypes[type].nSensorName;
    m_bShowSensorName = nName < 0 ? m_pages[type]->isShowSensorName() : nName == 1;
    emit signal_ShowSensorName(m_bShowSensorName);
    emit signal_DeviceTypeChanged(m_nSlot, type);
}

void ZOR_Form_Config_Bluetooth_Device_Type::readFormParam(BLUETOOTH_DEVICE_TYPE type, int nSlot, CXMLWorkData* lpRoot)
{
    ZOR_Form_Config_Ble_DevType* lpPage = page(type);
    if (!lpRoot || !lpPage)
        return;
    lpPage->setSlotNumber(nSlot);
    lpPage->readFormParam(lpRoot);
}

void ZOR_Form_Config_Bluetooth_Device_Type::writeFormParam(BLUETOOTH_DEVICE_TYPE type, int nSlot, CXMLWorkData* lpRoot)
{
    ZOR_Form_Config_Ble_DevType* lpPage = page(type);
    if (!lpRoot || !lpPage)
        return;
    lpPage->setSlotNumber(nSlot);
    lpPage->writeFormParam(lpRoot);
}

void ZOR_Form_Config_Bluetooth_Device_Type::translateForm()
{
    m_lpTypeLabel->setText(zorTr(QStringLiteral("cfgble_029")));
    m_types.fill(m_lpType);
    for (ZOR_Form_Config_Ble_DevType* lpPage : qAsConst(m_pages))
        if (lpPage)
            lpPage->translateForm();
}

void ZOR_Form_Config_Bluetooth_Device_Type::setDefaultParam()
{
    m_stale.fill(true, m_pages.size());
    m_bind.setDefaults();
    freshen(shownType());
}

void ZOR_Form_Config_Bluetooth_Device_Type::setFormEnabled(bool bEnabled)
{
    setEnabled(bEnabled);
}

void ZOR_Form_Config_Bluetooth_Device_Type::readFormParam(CXMLWorkData* lpRoot)
{
    if (!lpRoot)
        return;
    m_bind.readNode(lpRoot, ZOR_SettingsNode::name(QStringLiteral("BLE"), m_nSlot));
    readFormParam(deviceType(), m_nSlot, lpRoot);
}

void ZOR_Form_Config_Bluetooth_Device_Type::writeFormParam(CXMLWorkData* lpRoot)
{
    if (!lpRoot)
        return;
    m_bind.writeNode(lpRoot, ZOR_SettingsNode::name(QStringLiteral("BLE"), m_nSlot));
    writeFormParam(deviceType(), m_nSlot, lpRoot);
}

QVector<int> ZOR_Form_Config_Bluetooth_Device_Type::usedIndexes(int nKind) const
{
    ZOR_Form_Config_Ble_DevType* lpPage = page(shownType());
    return lpPage ? lpPage->usedIndexes(nKind) : QVector<int>();
}

void ZOR_Form_Config_Bluetooth_Device_Type::setTakenIndexes(int nKind, const QSet<int>& taken)
{
    m_taken[nKind] = taken;
    for (int i = 0; i < m_pages.size(); ++i)
        if (m_pages[i] && !m_stale.value(i))
            m_pages[i]->setTakenIndexes(nKind, taken);
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_FS(QString qsText, QString qsText_New)
{
    if (fromShownPage())
        emit signal_ChangeIdxFS(qsText, qsText_New);
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_Temp(QString qsText, QString qsText_New)
{
    if (fromShownPage())
        emit signal_ChangeIdxTS(qsText, qsText_New);
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_ChangeIdx_Dev_AS(QString qsText, QString qsText_New)
{
    if (fromShownPage())
        emit signal_ChangeIdxTS(qsText, qsText_New);
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Add(userParamType type)
{
    if (fromShownPage())
        emit signal_UserParam_Add(type.qsPrefix, type.qsMess, type.qsSuffix, type.nSize);
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Del(userParamType type)
{
    if (fromShownPage())
        emit signal_UserParam_Del(type.qsPrefix, type.qsMess, type.qsSuffix);
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Add_Uni(userParamType type, QString, QString)
{
    if (fromShownPage())
        emit signal_UserParam_Add(type.qsPrefix, type.qsMess, type.qsSuffix, type.nSize);
}

void ZOR_Form_Config_Bluetooth_Device_Type::slot_Device_UserParam_Del_Uni(userParamType type, QString, QString)
{
    if (fromShownPage())
        emit signal_UserParam_Del(type.qsPrefix, type.qsMess, type.qsSuffix);
}
