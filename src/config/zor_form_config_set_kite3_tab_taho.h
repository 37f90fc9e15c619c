#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_TAHO_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_TAHO_H

// Field-set tab: the tachograph: card slots and driver activity, mode, flags, speed,
// odometer and time.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_Taho : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_Taho(QWidget* parent = nullptr);
};

#endif
