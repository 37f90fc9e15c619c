#ifndef ZOR_FORM_CONFIG_BLE_DEVTYPE_UNI_H
#define ZOR_FORM_CONFIG_BLE_DEVTYPE_UNI_H

// The universal Bluetooth LE sensor: up to four conditions a broadcast must
// pass ("U<slot>C1".."C4") and up to eight values cut out of it
// ("U<slot>P1".."P8"). All twelve nodes are always written.
//
// A row is on while its group is not 0: switching a row off sets the group to
// 0 and the row's other values to their defaults (loading skips rows that
// are off, so only then does a saved file reload to the same bytes);
// switching it on by hand gives group 1, type byte FF, multiplier 1 and
// divider 1. Loading applies the first condition as stored (group 1 when the
// node has none) and every other node only when its group is not 0; the
// first condition has no operator of its own and is always saved with 0.
//
// Sensor types ("stor") with an index of their own: 1 user value (Uni),
// 2 fuel level (FlsL), 3 fuel temperature (FlsT), 4 the fuel sensor's third
// value (FlsF), 5 temperature (TmpT), 6 humidity (TmpH), each from 1 up to
// the count of its kind (indexCountOf: 8, 16, 16, 16, 4, 4). Two values of
// one type never share an index, whether set by hand or loaded: the later
// row moves to the first free index, and so does a loaded index past the
// kind's count. Types 0 and 7..9 (the axes) keep any index of 1..16.
//
// A value of sensor type 1 with a data type is a user parameter: prefix
// "UP", the text "U<slot>P<n>, <index> <caption of type 1>", the data-type
// code and its size. It is withdrawn (under the node name it was published
// with) and published again whenever its row, index, data type, the slot
// number or the language changes.
//
// Bad input: a type byte that is not one or two hex digits loads as the
// default (FF for conditions, 00 for values); "group" is clamped to 0..4,
// "offset" to 0..255, "mux" to 0..65535, "div" to 1..65535, "shift" to
// -32768..32767; "oper", "be", "stor", "idx" out of their lists and unknown
// data-type codes load as the default (0, 0, 0, 1, empty); "idx" past 16
// loads as 1 and then moves as above.

#include "config/zor_form_config_ble_devtype.h"
#include "config/zor_rowbuilder.h"

class ZOR_Form_Config_Ble_DevType_Uni : public ZOR_Form_Config_Ble_DevType
{
    Q_OBJECT
public:
    static constexpr int nConditions = 4;
    static constexpr int nParams = 8;
    // The longest index list (fuel sensor values: 16).
    static constexpr int nMaxIndex = 16;

    explicit ZOR_Form_Config_Ble_DevType_Uni(QWidget* parent = nullptr);

    void setSlotNumber(int nSlot) override;
    bool isShowSensorName() const override { return true; }

    void translateForm() override;
    void setDefaultParam() override;
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;

    // Column positions of the two row tables (tests and the window reach
    // the widgets through conditionWidget / paramWidget).
    enum CondColumn { CondLabel, CondOn, CondGroup, CondOper, CondType, CondOffset, CondMask };
    enum ParamColumn {
        PrmLabel,
        PrmOn,
        PrmGroup,
        PrmType,
        PrmOffset,
        PrmData,
        PrmBe,
        PrmStor,
        PrmIdx,
        PrmMux,
        PrmDiv,
        PrmShift
    };
    QWidget* conditionWidget(int nRow, int nColumn) const { return m_cond.widget(nRow, nColumn); }
    QWidget* paramWidget(int nRow, int nColumn) const { return m_prm.widget(nRow, nColumn); }

    // Index-list name of a sensor type code ("Uni", "FlsL" ...); "" for the
    // types without a list.
    static QString indexKindOf(int nStor);
    // How many indexes values of a sensor type may take (1..count): 8 user
    // values, 16 of each fuel-sensor value, 4 temperatures, 4 humidities;
    // nMaxIndex for the types without a list.
    static int indexCountOf(int nStor);
    // Indexes the rows of one list take now, in row order.
    QVector<int> indexesOfKind(const QString& qsKind) const;
    // The user parameters the page publishes now.
    QVector<userParamType> publishedParams() const override;

signals:
    void signal_Device_UserParam_Add_Uni(userParamType type, QString qsNode, QString qsDataCaption);
    void signal_Device_UserParam_Del_Uni(userParamType type, QString qsNode, QString qsDataCaption);

private:
    void buildRows();
    void connectRow(ZOR_RowBuilder& rows, int nRow, bool bParam);
    void rowSwitched(ZOR_RowBuilder& rows, int nRow, bool bParam, bool bOn);
    void paramKindOrIndexChanged(int nRow);
    void refreshIndexes();
    QSet<int> unavailableIndexes(int nRow, int nRows) const;
    void moveToFreeIndex(int nRow, int nRows);
    void publish(int nRow);
    void withdrawAll();
    int storOf(int nRow) const;
    int idxOf(int nRow) const;
    bool isOn(const ZOR_RowBuilder& rows, int nRow) const;

    ZOR_CaptionList m_opers;
    ZOR_CaptionList m_dataTypes;
    ZOR_CaptionList m_byteOrders;
    ZOR_CaptionList m_sensorTypes;
    ZOR_CaptionList m_indexes;
    ZOR_RowBuilder m_cond;
    ZOR_RowBuilder m_prm;
    QVector<userParamType> m_published = QVector<userParamType>(nParams);
    QVector<QString> m_publishedCaption = QVector<QString>(nParams);
    QVector<QString> m_publishedNode = QVector<QString>(nParams);
    QVector<QPair<QWidget*, QString>> m_titles;
    bool m_bLoading = false;
    bool m_bAdjusting = false;
};

#endif
