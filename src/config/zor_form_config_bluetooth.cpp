#include "config/zor_form_config_bluetooth.h"

#include "config/zor_form_config_bluetooth_device_type.h"
#include "config/zor_terminalprofile.h"
#include "module/zor_language.h"

#include <QComboBox>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

ZOR_Form_Config_Bluetooth::ZOR_Form_Config_Bluetooth(QWidget* parent)
    : ZOR_Form_Config(parent)
{
    auto box = new QVBoxLayout(this);
    m_lpTabs = new QTabWidget(this);
    box->addWidget(m_lpTabs);
    setSlotCount(ZOR_TerminalProfile().nBluetoothSlots);
}

void ZOR_Form_Config_Bluetooth::setSlotCount(int nCount)
{
    nCount = qBound(0, nCount, nMaxSlots);
    while (m_slots.size() > nCount) {
        ZOR_Form_Config_Bluetooth_Device_Type* lpSlot = m_slots.takeLast();
        // Withdraws what the slot offered before it goes.
        lpSlot->setDeviceType(BLE_DEVTYPE_NONE);
        QWidget* lpTab = m_lpTabs->widget(m_slots.size());
        m_lpTabs->removeTab(m_slots.size());
        delete lpTab;
    }
    while (m_slots.size() < nCount) {
        auto scroll = new QScrollArea(m_lpTabs);
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        auto lpSlot = new ZOR_Form_Config_Bluetooth_Device_Type(scroll);
        scroll->setWidget(lpSlot);
        const int nIndex = m_slots.size();
        lpSlot->setSlotNumber(nIndex + 1);
        m_slots.append(lpSlot);
        m_lpTabs->addTab(scroll, QString());
        connect(lpSlot, &ZOR_Form_Config::signal_UserParam_Add, this, &ZOR_Form_Config::signal_UserParam_Add);
        connect(lpSlot, &ZOR_Form_Config::signal_UserParam_Del, this, &ZOR_Form_Config::signal_UserParam_Del);
        connect(lpSlot, &ZOR_Form_Config_Bluetooth_Device_Type::signal_DeviceTypeChanged, this, [this, nIndex] {
            updateTabCaption(nIndex);
            refreshTakenIndexes();
        });
        for (auto lpSignal : {&ZOR_Form_Config_Bluetooth_Device_Type::signal_ChangeIdxFS_Int,
                 &ZOR_Form_Config_Bluetooth_Device_Type::signal_ChangeIdxTS_Int,
                 &ZOR_Form_Config_Bluetooth_Device_Type::signal_ChangeIdxAIN_Int})
            connect(lpSlot, lpSignal, this, &ZOR_Form_Config_Bluetooth::refreshTakenIndexes);
        watchEdits(lpSlot);
        updateTabCaption(nIndex);
    }
    refreshTakenIndexes();
}

void ZOR_Form_Config_Bluetooth::refreshTakenIndexes()
{
    for (int nKind = 0; nKind < ZOR_Form_Config_Ble_DevType::IdxKindCount; ++nKind) {
        QVector<QVector<int>> used;
        for (const auto* lpSlot : qAsConst(m_slots))
            used.append(lpSlot->usedIndexes(nKind));
        for (int s = 0; s < m_slots.size(); ++s) {
            QSet<int> taken;
            for (int o = 0; o < m_slots.size(); ++o)
                if (o != s)
                    for (int n : used[o])
                        taken.insert(n);
            m_slots[s]->setTakenIndexes(nKind, taken);
        }
    }
}

void ZOR_Form_Config_Bluetooth::updateTabCaption(int nIndex)
{
    const ZOR_Form_Config_Bluetooth_Device_Type* lpSlot = m_slots[nIndex];
    QString qsCaption = zorTr(QStringLiteral("cfgble_040")).arg(nIndex + 1);
    if (lpSlot->deviceType() != BLE_DEVTYPE_NONE)
        qsCaption += QStringLiteral(": %1").arg(lpSlot->deviceTypeBox()->currentText());
    m_lpTabs->setTabText(nIndex, qsCaption);
}

void ZOR_Form_Config_Bluetooth::translateForm()
{
    for (int i = 0; i < m_slots.size(); ++i) {
        m_slots[i]->translateForm();
        updateTabCaption(i);
    }
}

void ZOR_Form_Config_Bluetooth::setDefaultParam()
{
    for (auto* lpSlot : qAsConst(m_slots))
        lpSlot->setDefaultParam();
    refreshTakenIndexes();
}

void ZOR_Form_Config_Bluetooth::setFormEnabled(bool bEnabled)
{
    for (auto* lpSlot : qAsConst(m_slots))
        lpSlot->setFormEnabled(bEnabled);
}

void ZOR_Form_Config_Bluetooth::readFormParam(CXMLWorkData* lpRoot)
{
    for (auto* lpSlot : qAsConst(m_slots))
        lpSlot->readFormParam(lpRoot);
    refreshTakenIndexes();
}

void ZOR_Form_Config_Bluetooth::writeFormParam(CXMLWorkData* lpRoot)
{
    for (auto* lpSlot : qAsConst(m_slots))
        lpSlot->writeFormParam(lpRoot);
}

void ZOR_Form_Config_Bluetooth::applyProfile(const ZOR_TerminalProfile& profile)
{
    setSlotCount(profile.nBluetoothSlots);
}
