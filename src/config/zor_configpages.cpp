#include "config/zor_configpages.h"

#include "config/zor_form_config.h"
#include "config/zor_form_config_bluetooth.h"
#include "config/zor_form_config_can_param.h"
#include "config/zor_form_config_can_techotons6.h"
#include "config/zor_form_config_rs232.h"
#include "config/zor_form_config_rs485.h"
#include "config/zor_form_config_set_kite3.h"
#include "config/zor_form_config_track_locator_blist.h"
#include "config/zor_form_config_transfer_srvalg.h"

const QVector<ZOR_ConfigPage>& zorConfigPages()
{
    static const QVector<ZOR_ConfigPage> pages = {
        {"protocol", "cfgkt_001", &zorCreateConfigForm<ZOR_Form_Config_Set_Kite3>, true},
        {"transfer", "cfgsrv_001", &zorCreateConfigForm<ZOR_Form_Config_Transfer_SrvAlg>, false},
        {"wifi_blist", "cfgsrv_037", &zorCreateConfigForm<ZOR_Form_Config_Track_Locator_BList>, false},
        {"bluetooth", "cfgble_041", &zorCreateConfigForm<ZOR_Form_Config_Bluetooth>, false},
        {"can", "cfgcan_007", &zorCreateConfigForm<ZOR_Form_Config_CAN_Param>, false},
        {"can_s6", "cfgcan_008", &zorCreateConfigForm<ZOR_Form_Config_CAN_TechotonS6>, false,
            ZOR_Form_Config_CAN_TechotonS6::qsNodeName},
        {"rs232", "cfgrs_001", &zorCreateConfigForm<ZOR_Form_Config_RS232>, false},
        {"rs485", "cfgrs_002", &zorCreateConfigForm<ZOR_Form_Config_RS485>, false},
    };
    return pages;
}
