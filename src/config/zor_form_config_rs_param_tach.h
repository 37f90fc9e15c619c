#ifndef ZOR_FORM_CONFIG_RS_PARAM_TACH_H
#define ZOR_FORM_CONFIG_RS_PARAM_TACH_H

// A tachograph on the line (node "TACH": type, login, pass, noPing,
// eventOff). Each model talks at a fixed speed, no parity, and has a
// factory password; choosing a model asks for its line, fills in its
// password and clears the login.
//
//   type   model                  speed    password
//   ATOL   АТОЛ Drive 5           115200   570913
//   STRH   Штрих-ТахоRUS          19200    8264019375
//   MERK   Меркурий ТА-001        115200   570913
//   KONT   VDO DTCO (Continental)  9600    570913
//
// A node without "type" (or with an unknown one) loads ATOL; a node without
// "pass" loads 570913.

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_device.h"

class QComboBox;
class QLineEdit;

class ZOR_Form_Config_RS_Param_Tach : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Tach(QWidget* parent = nullptr);
    static const ZOR_CaptionList& models();
    static QString defaultPassword(const QString& qsModel);
    QString model() const;
    void setModel(const QString& qsModel);
    QString login() const;
    QString password() const;

public slots:
    void updateRs_Settings() override;

private:
    void modelChanged();

    QComboBox* m_lpType = nullptr;
    QLineEdit* m_lpLogin = nullptr;
    QLineEdit* m_lpPass = nullptr;
};

#endif
