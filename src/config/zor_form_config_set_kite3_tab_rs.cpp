#include "config/zor_form_config_set_kite3_tab_rs.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {38, "tmikte_163", "RS-485 %1 1"},
    {39, "tmikte_163", "RS-485 %1 2"},
    {40, "tmikte_163", "RS-485 %1 3"},
    {41, "tmikte_163", "RS-485 %1 4"},
    {42, "tmikte_163", "RS-485 %1 5"},
    {43, "tmikte_163", "RS-485 %1 6"},
    {44, "tmikte_163", "RS-232 %1"},
    {78, "tmikte_200", "%1 1"},
    {79, "tmikte_200", "%1 2"},
    {80, "tmikte_200", "%1 3"},
    {81, "tmikte_200", "%1 4"},
    {82, "tmikte_200", "%1 5"},
    {83, "tmikte_200", "%1 6"},
    {84, "tmikte_163", "RS-485 %1 7"},
    {85, "tmikte_163", "RS-485 %1 8"},
    {86, "tmikte_163", "RS-485 %1 9"},
    {87, "tmikte_163", "RS-485 %1 10"},
    {88, "tmikte_163", "RS-485 %1 11"},
    {89, "tmikte_163", "RS-485 %1 12"},
    {90, "tmikte_163", "RS-485 %1 13"},
    {91, "tmikte_163", "RS-485 %1 14"},
    {92, "tmikte_163", "RS-485 %1 15"},
    {93, "tmikte_163", "RS-485 %1 16"},
    {147, "tmikte_260", "%1 1"},
    {148, "tmikte_260", "%1 2"},
    {149, "tmikte_260", "%1 3"},
    {150, "tmikte_260", "%1 4"},
    {151, "tmikte_260", "%1 5"},
    {152, "tmikte_260", "%1 6"},
    {153, "tmikte_260", "%1 7"},
    {154, "tmikte_260", "%1 8"},
    {155, "tmikte_260", "%1 9"},
    {156, "tmikte_260", "%1 10"},
    {157, "tmikte_260", "%1 11"},
    {158, "tmikte_260", "%1 12"},
    {159, "tmikte_260", "%1 13"},
    {160, "tmikte_260", "%1 14"},
    {161, "tmikte_260", "%1 15"},
    {162, "tmikte_260", "%1 16"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_RS::ZOR_Form_Config_Set_Kite3_Tab_RS(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("RS"), "cfgkt_012");
    addBoxes(kBoxes);
    layoutByVersion();
}
