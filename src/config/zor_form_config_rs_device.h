#ifndef ZOR_FORM_CONFIG_RS_DEVICE_H
#define ZOR_FORM_CONFIG_RS_DEVICE_H

// The settings page of a device on a serial line whose values are one node
// below the interface node ("TACH", "RFID", "PCNT" ...): the page's values
// are one binding table, and reading, writing, the defaults, enabling and
// the refilling of the caption lists are the same for all of them. A page
// keeps only what is its own: its editors and binding rows, the line
// setting its model asks for, and what depends on one of its values.
//
//   ZOR_Form_Config_RS_Param_Axis(QWidget* parent)
//       : ZOR_Form_Config_RS_Device(parent, QStringLiteral("AXIS"))
//   {
//       auto holdTime = new QSpinBox(this);
//       addField("cfgrs_055", holdTime);
//       m_bind.integer("holdTime", holdTime, 15);
//       finishPage();
//   }

#include "config/zor_form_config_rs_param.h"
#include "config/zor_formbinding.h"

class ZOR_Form_Config_RS_Device : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    ZOR_Form_Config_RS_Device(QWidget* parent, const QString& qsNode);

    QString nodeName() const { return m_qsNode; }

public slots:
    // The node below the interface node: read when it exists (the defaults
    // when not); written created and cleared.
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;
    void setDefaultParam() override;
    void setFormEnabled(bool bEnabled) override { setEnabled(bEnabled); }
    // The captions of addField() and every caption list of the binding.
    void translateForm() override;

protected:
    // The end of a page's constructor, once its rows are bound: captions,
    // defaults, and its editors watched for edits.
    void finishPage();
    // After the values changed all at once (defaults, a load), for pages
    // whose editors depend on a value (the display model, the door count).
    virtual void valuesShown() { }

    ZOR_FormBinding m_bind;

private:
    QString m_qsNode;
};

#endif
