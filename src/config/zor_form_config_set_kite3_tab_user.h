#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_USER_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_USER_H

// Field-set tab: the user parameters, fields 207-255 - sixteen slots of 1
// byte, fifteen of 2, fifteen of 4 and three of 8. A slot is a check box (is
// the field in the record) and a list of the values that fit its width: the
// entries of the CAN and controller catalogue plus whatever the other pages
// publish into the window's ZOR_UserParamRegistry. Choosing a value checks
// the box; clearing the box clears the choice. A checked box without a value
// is a slot in use whose value is not named here (a mask from elsewhere).
//
// Saved layout (writeUserParam / readUserParam), below "PROTOCOL":
//
//   <USERPARAMS>
//       <FIELD207 prefix="SC" mess="2" suffix="1u" />
//       <FIELD224 prefix="MB" mess="MB1,  5,  1a" suffix="2u" />
//   </USERPARAMS>
//
// one node per slot with a named value, called by the slot's field number,
// in field order; the attributes are the value's three parts
// (ZOR_UserParamEntry). A saved value that nobody offers (yet) stays chosen
// and is listed as "not offered", so loading and saving keeps it; the same
// happens when a page withdraws a value that a slot has chosen. Loading
// skips a saved value whose type code names another width than its slot's
// ("2u" for a 1-byte slot), and one for a field the mask leaves out: the
// mask, read first, decides which fields are present.
//
// The lists of one width share one model, so a value published or withdrawn
// changes one list, not sixteen.

#include "config/zor_form_config_set_kite3_tab.h"
#include "config/zor_userparamentry.h"

#include <QVector>

class QComboBox;
class QStandardItemModel;
class ZOR_UserParams;
class ZOR_UserParamRegistry;

class ZOR_Form_Config_Set_Kite3_Tab_User : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_User(QWidget* parent = nullptr);
    ~ZOR_Form_Config_Set_Kite3_Tab_User() override;

    void translateForm() override;
    void setFormat_Enabled_Kite_3(bool bEnabled) override;
    void setUserParamRegistry(ZOR_UserParamRegistry* lpRegistry) override;
    // lpProtocol: the form's "PROTOCOL" node.
    void readFormParam(CXMLWorkData* lpProtocol) override { readUserParam(lpProtocol); }
    void writeFormParam(CXMLWorkData* lpProtocol) override { writeUserParam(lpProtocol); }
    void readUserParam(CXMLWorkData* lpProtocol);
    void writeUserParam(CXMLWorkData* lpProtocol);

    // The value chosen for the slot of field nField (empty parts: none).
    ZOR_UserParamEntry userParam(int nField) const;
    // Chooses a value for a slot (checks its box); false when nField is no slot.
    bool setUserParam(int nField, const ZOR_UserParamEntry& entry);
    // The values a slot of this width lists, "not offered" ones included.
    QVector<ZOR_UserParamEntry> listedParams(int nWidth) const;

private:
    struct Slot
    {
        int nField = 0;
        int nWidth = 0;
        QComboBox* lpCombo = nullptr;
        ZOR_UserParamEntry chosen;
    };

    QStandardItemModel* modelOf(int nWidth) const;
    int rowOf(int nWidth, const ZOR_UserParamEntry& entry) const;
    void addRow(int nWidth, const ZOR_UserParamEntry& entry, bool bOffered);
    void setRowOffered(int nWidth, int nRow, bool bOffered);
    bool isOffered(const ZOR_UserParamEntry& entry) const;
    QString captionOf(const ZOR_UserParamEntry& entry) const;
    void rebuildModels();
    void showChoice(Slot& slot);
    void choose(Slot& slot, const ZOR_UserParamEntry& entry);
    void slot_ChoiceChanged(int nSlot, int nRow);
    void slot_BoxToggled(int nSlot, bool bChecked);
    void slot_Published(const ZOR_UserParamEntry& entry);
    void slot_Withdrawn(const ZOR_UserParamEntry& entry);

    ZOR_UserParams* m_lpCatalogue;
    QString m_qsCatalogueLanguage;
    QVector<ZOR_UserParamEntry> m_catalogue;
    ZOR_UserParamRegistry* m_lpRegistry = nullptr;
    QVector<Slot> m_slots;
    QStandardItemModel* m_models[4] = {}; // widths 1, 2, 4, 8
    bool m_bShowing = false;
};

#endif
