#ifndef ZOR_FORM_CONFIG_RS_PORT_H
#define ZOR_FORM_CONFIG_RS_PORT_H

// A serial interface of the terminal as a configuration page: the kind of
// device on the line, the line settings (speed, parity, stop bits) and,
// below them, the settings page of the chosen device. A device page that
// needs a fixed line setting asks for it (changeRs_Settings); the port
// applies it to its own controls, which stay editable.
//
// Stored as one node per interface below the document's top element,
// "RS232" or "RS485", rewritten whole on every save:
//
//   <RS485 device="2" speed="9600" parity="None" stop="1">
//       ...the nodes of the shown device page only...
//   </RS485>
//
//   device  the kind code of kindTable() (unknown: 0, nothing on the line)
//   speed   "1200" ... "115200" (unknown: "9600")
//   parity  "None", "Even", "Odd" (unknown: "None")
//   stop    "1" or "2" (unknown: "1")
//
// The device page gets a cursor on the interface node. The Modbus table
// keeps its rows below a "USRPRMS" node there; the port creates that node
// whenever Modbus is the device, so a new configuration saves its rows, and
// since the port rewrites its node whole, rows switched off leave the file.
//
// User parameters of the shown page (the Modbus rows) leave the port as its
// own signal_UserParam_Add / _Del; choosing another device withdraws them,
// choosing Modbus again offers them again.

#include "config/zor_captionlist.h"
#include "config/zor_form_config.h"
#include "config/zor_formbinding.h"
#include "config/zor_pagestack.h"

#include <QVector>

class QComboBox;
class QLabel;
class QStackedWidget;
class ZOR_Form_Config_RS_Param;

class ZOR_Form_Config_RS_Port : public ZOR_Form_Config
{
    Q_OBJECT
public:
    enum Interface { RS232, RS485 };
    // Device kinds; the codes are stored, keep them.
    enum Kind {
        KindNone = 0,
        KindFuel = 1,
        KindModbus = 2,
        KindPassengers = 3,
        KindRefrigerator = 4,
        KindRfid = 5,
        KindTachograph = 6,
        KindTyres = 7,
        KindDisplay = 8,
        KindAxis = 9,
        KindDataCan = 10,
        KindDv01 = 11,
        KindCanLog = 12,
        KindCanFms = 13,
        KindHrps = 14,
    };

    Interface portInterface() const { return m_interface; }
    QString nodeName() const;
    // The kinds this interface offers, in list order.
    QVector<int> kinds() const;
    int currentKind() const;
    void setCurrentKind(int nKind);
    // The page of a kind on this interface (null when not offered).
    ZOR_Form_Config_RS_Param* page(int nKind) const;
    ZOR_Form_Config_RS_Param* shownPage() const { return page(m_stack.shownKind()); }

    QString speed() const;
    QString parity() const;
    QString stopBits() const;
    QComboBox* kindBox() const { return m_lpKind; }

    void translateForm() override;
    void setDefaultParam() override;
    void setFormEnabled(bool bEnabled) override;
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;

public slots:
    void slot_changeRs_Settings(QWidget* lpWnd, QString qsSpeed, QString qsParity, QString qsStopBit);

protected:
    ZOR_Form_Config_RS_Port(QWidget* parent, Interface which);

private:
    void showKind(int nKind);

    Interface m_interface;
    QComboBox* m_lpKind = nullptr;
    QComboBox* m_lpSpeed = nullptr;
    QComboBox* m_lpParity = nullptr;
    QComboBox* m_lpStop = nullptr;
    QStackedWidget* m_lpStack = nullptr;
    ZOR_PageStack m_stack;
    QVector<QPair<QLabel*, QString>> m_captions;
    QVector<ZOR_Form_Config_RS_Param*> m_pages; // by kind code, null when not offered
    ZOR_CaptionList m_kinds;
    ZOR_CaptionList m_speeds;
    ZOR_CaptionList m_parities;
    ZOR_CaptionList m_stops;
    ZOR_FormBinding m_device;
    ZOR_FormBinding m_line;
};

#endif
