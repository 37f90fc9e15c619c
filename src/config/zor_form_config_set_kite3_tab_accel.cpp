#include "config/zor_form_config_set_kite3_tab_accel.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {106},
    {107, "tmikte_223"},
    {108},
    {109, "cfgkt_035"},
    {139, "cfgkt_038"},
    {140},
    {141, "cfgkt_039"},
    {143},
    {144},
    {145, "tmikte_254"},
    {146, "cfgkt_048"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_Accel::ZOR_Form_Config_Set_Kite3_Tab_Accel(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("Accel"), "cfgkt_015");
    addBoxes(kBoxes);
    layoutByVersion();
}
