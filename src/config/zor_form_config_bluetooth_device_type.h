#ifndef ZOR_FORM_CONFIG_BLUETOOTH_DEVICE_TYPE_H
#define ZOR_FORM_CONFIG_BLUETOOTH_DEVICE_TYPE_H

// One Bluetooth LE sensor slot: a device-type selector and, below it, the
// settings page of the chosen type (one page per type, kept while another
// is shown, so switching back and forth keeps what was entered).
//
// The slot's device type is kept in the node "BLE<slot>", attribute "type"
// (BLUETOOTH_DEVICE_TYPE, 0..9; anything else loads as 0), written before
// the nodes of the type's page. Only the shown type's page is written.
//
// Index changes of the shown page are passed on (signal_ChangeIdx...) so the
// Bluetooth page can keep the slots' index lists consistent; user parameters
// of the universal page leave as the inherited signal_UserParam_Add/Del
// while that page is shown, and are withdrawn when another type is chosen.

#include "config/zor_form_config_ble_devtype.h"
#include "config/zor_pagestack.h"

class QComboBox;
class QLabel;
class QStackedWidget;

class ZOR_Form_Config_Bluetooth_Device_Type : public ZOR_Form_Config
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Bluetooth_Device_Type(QWidget* parent = nullptr);

    // Fixed height of the page area for a type, in pixels.
    static int areaHeight(BLUETOOTH_DEVICE_TYPE type);
    static ZOR_CaptionList deviceTypeCaptions();

    void setSlotNumber(int nSlot);
    int slotNumber() const { return m_nSlot; }
    BLUETOOTH_DEVICE_TYPE deviceType() const;
    void setDeviceType(BLUETOOTH_DEVICE_TYPE type);
    // The page of a type (null for none).
    ZOR_Form_Config_Ble_DevType* page(BLUETOOTH_DEVICE_TYPE type) const;
    QComboBox* deviceTypeBox() const { return m_lpType; }

    void showBluetoothSensorType(BLUETOOTH_DEVICE_TYPE type);
    // Whether the slot shows a sensor name for its current type.
    bool isShowSensorName() const { return m_bShowSensorName; }

    void readFormParam(BLUETOOTH_DEVICE_TYPE type, int nSlot, CXMLWorkData* lpRoot);
    void writeFormParam(BLUETOOTH_DEVICE_TYPE type, int nSlot, CXMLWorkData* lpRoot);

    void initForm() override;
    void translateForm() override;
    void setDefaultParam() override;
    void setFormEnabled(bool bEnabled) override;
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;

    // Indexes of a kind the shown page takes; and those other slots take.
    QVector<int> usedIndexes(int nKind) const;
    void setTakenIndexes(int nKind, const QSet<int>& taken);

signals:
    void signal_ChangeIdxFS(QString qsText, QString qsText_New);
    void signal_ChangeIdxTS(QString qsText, QString qsText_New);
    void signal_ChangeIdxFS_Int(int nOld, int nNew);
    void signal_ChangeIdxTS_Int(int nOld, int nNew);
    void signal_ChangeIdxAIN_Int(int nOld, int nNew);
    void signal_DeviceTypeChanged(int nSlot, int nType);
    void signal_ShowSensorName(bool bShow);

public slots:
    void slot_ChangeIdx_Dev_FS(QString qsText, QString qsText_New);
    void slot_ChangeIdx_Dev_Temp(QString qsText, QString qsText_New);
    void slot_ChangeIdx_Dev_AS(QString qsText, QString qsText_New);
    void slot_Device_UserParam_Add(userParamType type);
    void slot_Device_UserParam_Del(userParamType type);
    void slot_Device_UserParam_Add_Uni(userParamType type, QString qsNode, QString qsDataCaption);
    void slot_Device_UserParam_Del_Uni(userParamType type, QString qsNode, QString qsDataCaption);

private slots:
    void slot_currentIndexChanged_DeviceType(int nIndex);

private:
    void connectPageSignals();
    bool fromShownPage() const;
    BLUETOOTH_DEVICE_TYPE shownType() const { return BLUETOOTH_DEVICE_TYPE(qMax(0, m_stack.shownKind())); }
    // A page not shown is reset only when it is next needed: a load resets
    // every slot, and most slots show one page of nine.
    void freshen(int nType) const;

    int m_nSlot = 1;
    QComboBox* m_lpType = nullptr;
    QLabel* m_lpTypeLabel = nullptr;
    QStackedWidget* m_lpStack = nullptr;
    ZOR_PageStack m_stack;
    QVector<ZOR_Form_Config_Ble_DevType*> m_pages; // by type; [0] null
    mutable QVector<bool> m_stale; // by type: defaults still to be set
    QHash<int, QSet<int>> m_taken; // index kind -> taken elsewhere
    ZOR_CaptionList m_types;
    ZOR_FormBinding m_bind;
    bool m_bShowSensorName = false;
};

#endif
