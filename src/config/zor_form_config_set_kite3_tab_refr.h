#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_REFR_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_REFR_H

// Field-set tab: the refrigeration unit: state, zone and set temperatures, supplies,
// hours, error codes, engine and compressor.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_Refr : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_Refr(QWidget* parent = nullptr);
};

#endif
