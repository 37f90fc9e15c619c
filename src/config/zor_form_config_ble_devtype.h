#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_H

// The common part of the settings pages of one Bluetooth LE sensor slot.
//
// The simple sensor types are all alike: a model list (stored as "type", the
// position of the model in the list), sometimes an index among sensors of
// the same kind ("idx") and a threshold, and for the combined sensors one or
// more built-in temperature channels in the node "TS<slot>". Each such page
// is a Layout table handed to buildPage(); the page's own class only names
// its index-change signals.
//
// Temperature channels: a channel's "type" is 1 when the channel is used and
// 0 when not, its "idx" the temperature sensor number 1..4. A page with one
// channel writes "type" and "idx"; with several, "type1", "idx1", "type2" ...
//
// Indexes stored are the numbers shown (fuel sensor 1..16, temperature
// sensor 1..4, analogue input 1..6). An index another slot already uses is
// shown disabled (setTakenIndexes), so that two slots never pick the same one
// by hand; a file that has them twice still loads as it is.

#include "config/zor_captionlist.h"
#include "config/zor_form_config.h"
#include "config/zor_formbinding.h"
#include "config/zor_userparamentry.h"

#include <QSet>
#include <QVector>

class QComboBox;
class QCheckBox;
class QFormLayout;
class QSpinBox;

// Device type of a sensor slot, as stored.
enum BLUETOOTH_DEVICE_TYPE {
    BLE_DEVTYPE_NONE = 0,
    BLE_DEVTYPE_FLS = 1,
    BLE_DEVTYPE_TEMP = 2,
    BLE_DEVTYPE_AS = 3,
    BLE_DEVTYPE_AXS = 4,
    BLE_DEVTYPE_FW = 5,
    BLE_DEVTYPE_UNI = 6,
    BLE_DEVTYPE_US = 7,
    BLE_DEVTYPE_AIN = 8,
    BLE_DEVTYPE_HS = 9,
};
constexpr int BLE_DEVTYPE_COUNT = 10;

// A user parameter a sensor page offers to the telemetry record.
using userParamType = ZOR_UserParamEntry;

class ZOR_Form_Config_Ble_DevType : public ZOR_Form_Config
{
    Q_OBJECT
public:
    // Index families shared between the slots.
    enum IndexKind { IdxFuel = 0, IdxTemp = 1, IdxAin = 2, IdxKindCount = 3 };

    explicit ZOR_Form_Config_Ble_DevType(QWidget* parent = nullptr);

    // The slot number ("%1" of the node names), from 1.
    virtual void setSlotNumber(int nSlot) { m_nSlot = nSlot; }
    int slotNumber() const { return m_nSlot; }

    // Whether the slot shows a sensor name for this page's sensor.
    virtual bool isShowSensorName() const { return true; }

    // Indexes of this kind the page's values take now (0 never counts).
    virtual QVector<int> usedIndexes(int nKind) const;
    // Indexes of this kind other slots take: shown disabled.
    virtual void setTakenIndexes(int nKind, const QSet<int>& taken);

    void translateForm() override;
    void setDefaultParam() override;
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;

    // Index captions: the key's text and the number, one-digit numbers
    // padded with a blank when bAligned ("%1  1" ... "%1 16").
    static ZOR_CaptionList indexCaptions(const QString& qsKey, int nCount, bool bAligned);
    // Disables the entries whose codes are in taken, except the shown one.
    static void markTaken(QComboBox* lpBox, const ZOR_CaptionList& list, const QSet<int>& taken);

signals:
    void signal_Device_UserParam_Add(userParamType type);
    void signal_Device_UserParam_Del(userParamType type);

protected:
    struct Layout
    {
        const char* lpWord = nullptr; // main node "FS", "TS", "AS" ...
        QStringList models;
        int nIdxKind = -1; // index on the main node; -1 none
        const char* lpIdxKey = nullptr;
        int nIdxCount = 0;
        bool bIdxAligned = false;
        int nLightSensors = 0; // "ls": 0 none, n light sensor "LS<n>"
        bool bThreshold = false; // "thld" and "thldOff"
        int nTsChannels = 0; // temperature channels in "TS%1"
    };
    void buildPage(const Layout& layout);

    // A shown index changed (0: none); pages emit their own signals.
    virtual void indexChanged(int nKind, int nOld, int nNew, const QString& qsOld, const QString& qsNew);

    int m_nSlot = 1;

private:
    struct IndexBox
    {
        QComboBox* lpBox = nullptr;
        QCheckBox* lpUse = nullptr; // channel switch; null: always used
        int nKind = IdxTemp;
        ZOR_CaptionList* lpList = nullptr;
        int nShown = 0;
    };
    int shownIndex(const IndexBox& box) const;
    void watchIndex(int nBox);
    void refreshIndexes();

    Layout m_layout;
    ZOR_CaptionList m_models;
    ZOR_CaptionList m_mainIdx;
    ZOR_CaptionList m_channelIdx;
    ZOR_CaptionList m_lights;
    ZOR_FormBinding m_main;
    ZOR_FormBinding m_channels;
    QVector<IndexBox> m_indexBoxes;
    QVector<QSet<int>> m_taken = QVector<QSet<int>>(IdxKindCount);
    QVector<QPair<QWidget*, QString>> m_labels; // widget, caption key
};

#endif
