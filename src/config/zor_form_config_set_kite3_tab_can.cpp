#include "config/zor_form_config_set_kite3_tab_can.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {53, "cfgkt_026"},
    {54, "tmikte_173"},
    {55, "tmikte_174"},
    {56, "tmikte_175"},
    {57, "tmikte_176"},
    {58, "tmikte_177", "%1 1"},
    {59, "tmikte_177", "%1 2"},
    {60, "tmikte_177", "%1 3"},
    {61, "tmikte_177", "%1 4"},
    {62, "tmikte_177", "%1 5"},
    {63, "tmikte_178"},
    {64, "tmikte_179"},
    {65, "tmikte_180"},
    {66, "cfgkt_027"},
    {67, "tmikte_183"},
    {68, "tmikte_184"},
    {69, "tmikte_185"},
    {201, "cfgkt_046"},
    {202, "tmikte_298"},
    {203, "tmikte_299"},
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
