#ifndef ZOR_FORM_CONFIG_RS_PARAM_MDBS_H
#define ZOR_FORM_CONFIG_RS_PARAM_MDBS_H

// The Modbus table of a serial line: up to 32 values polled from slaves and
// up to 10 conditions that raise the event "Изменились параметры MODBUS".
//
// Each row in use is a user parameter, published (signal_UserParam_Add /
// _Del: "MB", the row label, the data-type caption, its size) while it is
// in use. The row label "MB1,  5,  1a" (row, slave address, register in
// hex, two blanks after each comma) is how events and other pages name the
// row, so it is kept to the letter.
//
// Storage: below the node "USRPRMS" of the cursor given to readParamMdbs /
// writeParamMdbs, "MDBSPRM<row>" (prm addr reg cmd ord cycle save) for each
// row in use and "MDBSEVNT<event>" (prm cond step low high hyst) for each
// event in use. Without "USRPRMS" neither reads nor writes anything: the
// owner of the table creates that node (the RS-485 page does when Modbus is
// its device). readFormParam / writeFormParam do nothing on this page.

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_param.h"
#include "config/zor_rowbuilder.h"
#include "config/zor_userparamentry.h"

#include <QStringList>
#include <QVector>

class QComboBox;
class QLabel;
class QRadioButton;
class QSpinBox;

extern const QString glqsMbPreffix; // "MB"
extern const QString glqsMbPreffixXml; // "mb"

class ZOR_Form_Config_RS_Param_Mdbs : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    static constexpr int nRows = 32;
    static constexpr int nEvents = 10;
    // Rows 1-8 accept slave address 255, the others stop at 254.
    static constexpr int nRowsWithAddress255 = 8;

    // Columns of the value rows and of the event rows.
    enum RowColumn { RowCaption, RowOn, RowAddr, RowReg, RowNumber, RowCmd, RowPrm, RowOrd, RowCycle, RowSave };
    enum EventColumn { EvCaption, EvOn, EvPrm, EvCond, EvStep, EvLow, EvHigh, EvHyst };

    explicit ZOR_Form_Config_RS_Param_Mdbs(QWidget* parent = nullptr);

    void readParamMdbs(CXMLWorkData* lpRoot);
    void writeParamMdbs(CXMLWorkData* lpRoot);
    // The interface page's node: the table is read from it, and written
    // below a "USRPRMS" node created there.
    void readPortParam(CXMLWorkData* lpPort) override { readParamMdbs(lpPort); }
    void writePortParam(CXMLWorkData* lpPort) override;

    // By XML identifier ("mb5"): "<label>, <data-type caption>" / the label /
    // "MB, <label>, <caption>"; empty when the row is not in use.
    QString getStrTypeModbus(QString qsId) const;
    QString getStrTypeModbusEvent(QString qsId) const;
    QString getStrProtocolUserData(QString qsId) override;
    QString getTypeUserParam(QString qsId) override;

    // Register number <-> address and type (the Modbus numbering): 0 when the
    // number names no register.
    static int registerNumber(int nAddress, int nCmd);
    static bool registerFromNumber(int nNumber, int* lpAddress, int* lpCmd);

    bool isByNumber() const;
    void setByNumber(bool bByNumber);
    bool isRowOn(int nRow) const; // rows from 1
    void setRowOn(int nRow, bool bOn);
    bool isEventOn(int nEvent) const; // events from 1
    void setEventOn(int nEvent, bool bOn);
    QString rowLabel(int nRow) const; // the published label, "" when off
    QStringList labels() const { return m_labels; }
    int lastAddress() const { return m_nLastAddress; }
    // What the page publishes now: one entry per row in use.
    QVector<ZOR_UserParamEntry> publishedParams() const override;

    QWidget* rowWidget(int nRow, RowColumn column) const { return m_rows.widget(nRow - 1, column); }
    QWidget* eventWidget(int nEvent, EventColumn column) const { return m_events.widget(nEvent - 1, column); }

    static const ZOR_CaptionList& registerTypeCaptions();
    static const ZOR_CaptionList& byteOrderCaptions();
    static const ZOR_CaptionList& conditionCaptions();

public slots:
    void readFormParam(CXMLWorkData* lpRoot) override { Q_UNUSED(lpRoot) }
    void writeFormParam(CXMLWorkData* lpRoot) override { Q_UNUSED(lpRoot) }
    void setDefaultParam() override;
    void setFormEnabled(bool bEnabled) override;
    void translateForm() override;

private:
    struct Published
    {
        QString qsLabel;
        QString qsCaption;
    };

    static QVector<ZOR_RowBuilder::Column> rowColumns();
    static QVector<ZOR_RowBuilder::Column> eventColumns();
    void buildRows();
    void connectRow(int nIndex);
    void connectEvent(int nIndex);
    void rowSwitched(int nIndex, bool bOn);
    void rowAddressChanged(int nIndex);
    void rowDataTypeChanged(int nIndex);
    void numberChanged(int nIndex);
    void updateNumber(int nIndex);
    void colourNumber(int nIndex);
    void enableRowFields(int nIndex);
    void eventSwitched(int nIndex, bool bOn);
    void enableEventFields(int nIndex);
    QString composeLabel(int nIndex) const;
    QString dataCaption(int nIndex) const;
    void publish(int nIndex);
    void withdraw(int nIndex);
    void addLabelToEvents(const QString& qsLabel);
    void removeLabelFromEvents(const QString& qsLabel);
    int rowOfId(const QString& qsId) const; // index, -1 when not a row in use
    int rowOfLabel(const QString& qsLabel) const;

    QSpinBox* spin(int nIndex, int nColumn) const;
    QComboBox* combo(int nIndex, int nColumn) const;
    QComboBox* eventCombo(int nIndex, int nColumn) const;

    ZOR_RowBuilder m_rows;
    ZOR_RowBuilder m_events;
    QVector<Published> m_published;
    QStringList m_labels;
    int m_nLastAddress = 1;
    bool m_bSyncing = false;
    QRadioButton* m_lpByAddress = nullptr;
    QRadioButton* m_lpByNumber = nullptr;
    QLabel* m_lpModeTitle = nullptr;
    QLabel* m_lpRowsTitle = nullptr;
    QLabel* m_lpEventsTitle = nullptr;
};

#endif
