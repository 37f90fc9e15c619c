#ifndef ZOR_FORM_CONFIG_RS_PARAM_FLDS_H
#define ZOR_FORM_CONFIG_RS_PARAM_FLDS_H

// Fuel level sensors on a serial line, one row and one node ("FS1",
// "FS2"...) per sensor: use, type, address, thld, thldOff, filterMode,
// filterLength, filterLvl, all integers, every node written.
//
// Sensor types ("type"), our own list of the sensors met in the field:
//   0  Omnicomm LLS             2  Technoton DUT-E        4  another sensor
//   1  Escort TD                3  Mielta                    speaking LLS
// Filter modes ("filterMode"): 0 averaging over filterLength samples,
// 1 Kalman filter of level filterLvl.
// An unknown type or mode loads as 0.

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_param.h"
#include "config/zor_rowbuilder.h"

class ZOR_Form_Config_RS_Param_Flds : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    enum Column { Caption, Use, Type, Address, Thld, ThldOff, FilterMode, FilterLength, FilterLvl };

    int sensorCount() const { return m_rows.rowCount(); }
    QWidget* sensorWidget(int nSensor, Column column) const { return m_rows.widget(nSensor - 1, column); }
    static const ZOR_CaptionList& sensorTypeCaptions();

public slots:
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;
    void setDefaultParam() override;
    void setFormEnabled(bool bEnabled) override;
    void translateForm() override;

protected:
    ZOR_Form_Config_RS_Param_Flds(QWidget* parent, int nSensors);

private:
    void enableSensor(int nIndex);

    ZOR_CaptionList m_filterModes;
    ZOR_RowBuilder m_rows;
};

#endif
