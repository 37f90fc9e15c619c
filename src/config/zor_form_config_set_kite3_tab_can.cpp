#include "config/zor_form_config_set_kite3_tab_can.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {53, "cfgkt_026"},
    {54},
    {55},
    {56},
    {57},
    {58},
    {59},
    {60},
    {61},
    {62},
    {63},
    {64},
    {65},
    {66, "cfgkt_027"},
    {67},
    {68},
    {69},
    {201, "cfgkt_046"},
    {202},
    {203},
    {204, "cfgkt_047"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_CAN::ZOR_Form_Config_Set_Kite3_Tab_CAN(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("CAN"), "cfgkt_013");
    addBoxes(kBoxes);
    layoutByVersion();
}
