#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_CAN_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_CAN_H

// Field-set tab: values read from the vehicle's CAN bus, and its state, events and failures.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_CAN : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_CAN(QWidget* parent = nullptr);
};

#endif
