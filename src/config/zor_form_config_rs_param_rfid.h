#ifndef ZOR_FORM_CONFIG_RS_PARAM_RFID_H
#define ZOR_FORM_CONFIG_RS_PARAM_RFID_H

// A card reader (node "RFID": type, id, holdTime, nearOnly, minLvl, mode).
//
//   type     reader                 id        reader address 0..255 (default 1)
//   ESCORT   Escort RFID (default)  holdTime  seconds a read card is held,
//   LLS      LLS-protocol reader              0..86400 (default 60)
//   MIELTA   Mielta RFID            nearOnly  only cards held close (0/1)
//   ADM20    ADM20                  minLvl    weakest signal taken, -128..0 dBm
//                                   mode      0 a card is held for holdTime,
//                                             1 until another card is read

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_device.h"

class QComboBox;

class ZOR_Form_Config_RS_Param_Rfid : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Rfid(QWidget* parent = nullptr);
    static const ZOR_CaptionList& models();

private:
    QComboBox* m_lpType = nullptr;
    ZOR_CaptionList m_modes;
};

#endif
