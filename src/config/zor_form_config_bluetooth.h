#ifndef ZOR_FORM_CONFIG_BLUETOOTH_H
#define ZOR_FORM_CONFIG_BLUETOOTH_H

// The Bluetooth page of the configuration: one tab per sensor slot of the
// terminal (ZOR_TerminalProfile::nBluetoothSlots, 8 unless the profile says
// otherwise), each a ZOR_Form_Config_Bluetooth_Device_Type.
//
// The page passes its slots' user parameters on as its own, and keeps the
// slots' index lists consistent: a fuel sensor number, temperature sensor
// number or analogue input one slot uses is shown disabled in the others.
// Nodes of slots beyond the profile's count stay in the document untouched.

#include "config/zor_form_config.h"

#include <QVector>

class QTabWidget;
class ZOR_Form_Config_Bluetooth_Device_Type;

class ZOR_Form_Config_Bluetooth : public ZOR_Form_Config
{
    Q_OBJECT
public:
    static constexpr int nMaxSlots = 32;

    explicit ZOR_Form_Config_Bluetooth(QWidget* parent = nullptr);

    int slotCount() const { return m_slots.size(); }
    ZOR_Form_Config_Bluetooth_Device_Type* slotPage(int nIndex) const { return m_slots.value(nIndex, nullptr); }
    void setSlotCount(int nCount);

    void translateForm() override;
    void setDefaultParam() override;
    void setFormEnabled(bool bEnabled) override;
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;
    void applyProfile(const ZOR_TerminalProfile& profile) override;

private:
    void refreshTakenIndexes();
    void updateTabCaption(int nIndex);

    QTabWidget* m_lpTabs = nullptr;
    QVector<ZOR_Form_Config_Bluetooth_Device_Type*> m_slots;
};

#endif
