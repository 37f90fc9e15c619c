#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_ACCEL_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_ACCEL_H

// Field-set tab: the accelerometer: accelerations, the virtual accelerometer and the
// driving-quality values.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_Accel : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_Accel(QWidget* parent = nullptr);
};

#endif
