#ifndef ZOR_FORM_CONFIG_CAN_TECHOTONS6_H
#define ZOR_FORM_CONFIG_CAN_TECHOTONS6_H

// Technoton S6 bus devices: one fuel flow meter (DFM) and up to eight fuel
// level sensors (DUT-E 1..8). The form keeps its values on the element it is
// handed: the attribute "outFS" and the children "S6DFM1", "S6DUT1" ...
// "S6DUT8" directly under it. The configuration document hands it the
// element "S6" (qsNodeName) below its top, so a saved file reads:
//
//   <S6 outFS="4095">
//       <S6DFM1 mode="0" address1="11" address2="12" />
//       <S6DUT1 address="0" filterMode="0" filterLength="5" filterLvl="5" />
//       ... S6DUT8
//   </S6>
//
// outFS      the sensors' output scale, one for all: the scale's top value,
//            1023, 4095 (default) or 65535; another stored value loads 4095.
//            Each sensor row shows it; changing it in one row changes all.
// mode       flow meter: 0 not used (default), 1 one chamber (address1),
//            2 two chambers, supply and return (address1 and address2)
// address*   S6 network addresses 1..254; the flow meter's defaults 11, 12.
// DUT-E      address 0 means "not in use" (the row's use box); a ticked row
//            takes 1..254, by default its own number. filterMode 0 averaging,
//            1 adaptive (Kalman); filterLength 1..30 readings, default 5;
//            filterLvl 0..10, default 5 (as the serial fuel sensors).
// A sensor's controls are enabled only while its use box is ticked; its
// values are kept (and saved) while it is off.

#include "config/zor_captionlist.h"
#include "config/zor_form_config.h"
#include "config/zor_formbinding.h"
#include "config/zor_rowbuilder.h"

#include <memory>

class QCheckBox;
class QComboBox;
class QSpinBox;

namespace Ui {
class ZOR_Form_Config_CAN_TechotonS6;
}

class ZOR_Form_Config_CAN_TechotonS6 : public ZOR_Form_Config
{
    Q_OBJECT
public:
    static constexpr int nDutCount = 8;
    static constexpr int nDefaultOutFs = 4095;
    // The element the configuration document opens for this form.
    static const char* const qsNodeName; // "S6"

    explicit ZOR_Form_Config_CAN_TechotonS6(QWidget* parent = nullptr);
    ~ZOR_Form_Config_CAN_TechotonS6() override;

    void initForm() override;
    void translateForm() override;
    void setDefaultParam() override;
    // lpNode: the form's own element (its attributes are written, its
    // children created and cleared; other content stays).
    void readFormParam(CXMLWorkData* lpNode) override;
    void writeFormParam(CXMLWorkData* lpNode) override;

    // Output scale list: the number of a shown text (0 for a text not in the
    // list) and the text of a number ("" for a number not in the list).
    int getDutE_Number4Text(const QString& qsText) const;
    QString getDutE_Text4Number(int nNumber) const;
    // Shows the scale of this text in every sensor row.
    void changeOutFsTypeAll(const QString& qsText);

    // Row widgets, sensor nIndex from 0.
    QCheckBox* dutUse(int nIndex) const;
    QSpinBox* dutAddress(int nIndex) const;
    QComboBox* dutOutFs(int nIndex) const;
    QComboBox* dutFilterMode(int nIndex) const;
    QSpinBox* dutFilterLength(int nIndex) const;
    QSpinBox* dutFilterLvl(int nIndex) const;

private slots:
    void slot_stateChanged_DutE_Use_1(int nState) { useChanged(0, nState); }
    void slot_stateChanged_DutE_Use_2(int nState) { useChanged(1, nState); }
    void slot_stateChanged_DutE_Use_3(int nState) { useChanged(2, nState); }
    void slot_stateChanged_DutE_Use_4(int nState) { useChanged(3, nState); }
    void slot_stateChanged_DutE_Use_5(int nState) { useChanged(4, nState); }
    void slot_stateChanged_DutE_Use_6(int nState) { useChanged(5, nState); }
    void slot_stateChanged_DutE_Use_7(int nState) { useChanged(6, nState); }
    void slot_stateChanged_DutE_Use_8(int nState) { useChanged(7, nState); }
    void slot_currentIndexChanged_DfmMode(int nIndex);

private:
    void useChanged(int nIndex, int nState);
    void showUse(int nIndex, bool bUse);
    int outFs() const;

    std::unique_ptr<Ui::ZOR_Form_Config_CAN_TechotonS6> ui;
    ZOR_CaptionList m_outFs;
    ZOR_CaptionList m_filterModes;
    ZOR_CaptionList m_dfmModes;
    ZOR_FormBinding m_dfm;
    ZOR_RowBuilder m_duts;
    int m_nLastAddress[nDutCount] = {};
};

#endif
