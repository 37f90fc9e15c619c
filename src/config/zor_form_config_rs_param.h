#ifndef ZOR_FORM_CONFIG_RS_PARAM_H
#define ZOR_FORM_CONFIG_RS_PARAM_H

// The base of every page of a device on a serial line (RS-232, RS-485). The
// interface page shows one of them below its device-kind selector, hands it
// a cursor on the interface's own node, and applies what the page asks for
// with changeRs_Settings to its speed, parity and stop-bit controls.
//
// Line settings travel as texts: speed "9600", parity "None" / "Even" /
// "Odd", stop bits "1" or "2". Every fixed setting a device model asks for
// uses one stop bit (nStopBitDefault): none of the supported devices talks
// with two.
//
// Pages that read values into the telemetry record answer
// getStrProtocolUserData / getTypeUserParam for their identifiers; the ones
// that publish values emit the inherited signal_UserParam_Add / _Del.
//
// Most pages are a column of labelled settings: addField() puts a caption
// key and its editor into the page's form layout, and translateForm() of the
// base refreshes those captions.

#include "config/zor_form_config.h"

#include <QPair>
#include <QVector>

class QFormLayout;
class QLabel;

class ZOR_Form_Config_RS_Param : public ZOR_Form_Config
{
    Q_OBJECT
public:
    static const char* const qsStopBitDefault; // "1"

    explicit ZOR_Form_Config_RS_Param(QWidget* parent = nullptr);

    virtual QString getStrProtocolUserData(QString qsId)
    {
        Q_UNUSED(qsId)
        return QString();
    }
    virtual QString getTypeUserParam(QString qsId)
    {
        Q_UNUSED(qsId)
        return QString();
    }

public slots:
    void readFormParam(CXMLWorkData* lpRoot) override { Q_UNUSED(lpRoot) }
    void writeFormParam(CXMLWorkData* lpRoot) override { Q_UNUSED(lpRoot) }
    void deviceConnect() override { }
    void deviceDisconnect() override { }
    void setDefaultParam() override { }
    void setFormEnabled(bool bEnabled) override { Q_UNUSED(bEnabled) }
    void translateForm() override;
    // Asks again for the current model's line setting (the interface page
    // calls it when the page is shown).
    virtual void updateRs_Settings() { }
    // What the interface page calls with its own node: readFormParam /
    // writeFormParam, except on a page that keeps its values another way
    // (the Modbus table below "USRPRMS").
    virtual void readPortParam(CXMLWorkData* lpPort) { readFormParam(lpPort); }
    virtual void writePortParam(CXMLWorkData* lpPort) { writeFormParam(lpPort); }

signals:
    void changeRs_Settings(QWidget* lpWnd, QString qsSpeed, QString qsParity, QString qsStopBit);
    void openTab();

protected:
    // The page's form layout, created on first use.
    QFormLayout* formLayout();
    // A captioned row of the form layout; the caption is a language key.
    void addField(const char* lpKey, QWidget* lpEditor);
    // A line setting with no parity and one stop bit, from this page.
    void requestLine(const QString& qsSpeed);
    // A value of the catalogue's list qsPrefix ("CO", "RC", "AX") by its
    // identifier, the prefix in lower case and the number ("co5"): its name
    // "CO, 5, 2u" and its type text "2u"; "" when the list has no such entry.
    static QString catalogueName(const QString& qsPrefix, const QString& qsId);
    static QString catalogueType(const QString& qsPrefix, const QString& qsId);

private:
    QFormLayout* m_lpForm = nullptr;
    QVector<QPair<QLabel*, QString>> m_captions;
};

#endif
