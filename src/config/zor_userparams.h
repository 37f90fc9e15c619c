#ifndef ZOR_USERPARAMS_H
#define ZOR_USERPARAMS_H

// The built-in catalogue of values the terminal reads from vehicle buses and
// external controllers and can report as numbered user parameters. Each
// list is an ordered vector of entries built from its table
// (zor_userparams_tables.h); the captions are looked up when a list is built.
//
//   list  source                              prefix global        entries
//   SC    vehicle CAN bus                     glqsCanPreffix_SC    23 + 54 bits
//   BC    CAN bus, the other variant          glqsCanPreffix_BC    21 + 8 bits
//   AC    CAN bus, additional parameters      glqsCanPreffix_AC    102 + 110 bits
//   CO    passenger counter                   glqsPcntPreffix_CO   18
//   AX    refrigeration unit, auxiliary ctrl  glqsRefrPreffix_AX   15
//   RC    refrigeration unit controller       glqsRefrPreffix_RC   37
//   Cmd   commands sent on the CAN bus        (none)               10
//   CE    a controller's own numbers          glqsCEPreffix_CE     no list
//
// Ownership: the catalogue owns every entry, an entry its bits. Rebuilding a
// list (createList_*, or translateClass() which rebuilds every list so that
// the captions are looked up again) deletes the old entries first; pointers
// taken from an accessor before that are dangling afterwards.
//
// Naming a user parameter. Stored texts and the field-set form name a user
// parameter by three parts joined with getUserParamName():
//
//     "<prefix>, <number>, <type>"        "SC, 1, 2u"   "RC, 37, 2s"
//
// the list's prefix, the parameter number in decimal and the type text. The
// name does not depend on the language (getUserParamTitle() gives the
// caption). Spaces around the commas are ignored when a name is read; a name
// without its type part ("SC, 1") is read as that parameter whatever its
// type, one whose type part differs from the catalogue's names nothing.
// Bits of a bit set and commands are not user parameters; bit sets are,
// whole. getUserParamEntries() gives the same three parts as
// ZOR_UserParamEntry {prefix, number, type, size}.
//
//   ZOR_UserParams catalogue;
//   catalogue.getStrProtocolUserCAN_SC(1);             // "SC, 1, 2u"
//   int n = 0;
//   catalogue.getTypeCAN_SC("SC, 1, 2u", &n);          // true, n == 1
//   catalogue.getNumberType_CAN_SC("SC, 1, 2u");       // 5, the code of "2u"
//   catalogue.getUserParamTitle("SC, 1, 2u");          // "Engine speed, rpm" in English

#include "config/zor_userparam_can.h"
#include "config/zor_userparamentry.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

class ZOR_UserParams : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_UserParams(QObject* parent = nullptr);
    ~ZOR_UserParams() override;

    // Builds every list again, looking the captions up in the current language.
    void translateClass();

    void createList_SC();
    void createList_BC();
    void createList_AC();
    void createList_CO();
    void createList_AX();
    void createList_RC();
    void createList_Cmd();

    // Each clears the caller's vector and fills it with the list's entries in
    // list order; the entries stay owned by the catalogue.
    void getListParamsCAN_SC(QVector<ZOR_UserParam_CAN*>& list) const;
    void getListParamsCAN_BC(QVector<ZOR_UserParam_CAN*>& list) const;
    void getListParamsCAN_AC(QVector<ZOR_UserParam_CAN*>& list) const;
    void getListParams_CO(QVector<ZOR_UserParam_CAN*>& list) const;
    void getListParams_AX(QVector<ZOR_UserParam_CAN*>& list) const;
    void getListParams_RC(QVector<ZOR_UserParam_CAN*>& list) const;
    void getListParamsCAN_Cmd(QVector<ZOR_UserParam_CAN*>& list) const;

    // Numbering of older terminal firmware (3.16, 3.20): maps from the number
    // that firmware used to today's number, for every number it knew that is
    // still in today's list (entries and bits). A number missing from a map
    // was unknown to that firmware. The contents are described in the tables.
    void createList_SC_316();
    void createList_SC_320();
    void createList_AC_316();
    void createList_AC_320();
    void createList_Cmd_316();
    void createList_Cmd_320();
    void getListParamsCAN_SC_316(QMap<int, int>& map) const;
    void getListParamsCAN_SC_320(QMap<int, int>& map) const;
    void getListParamsCAN_AC_316(QMap<int, int>& map) const;
    void getListParamsCAN_AC_320(QMap<int, int>& map) const;
    void getListParamsCAN_Cmd_316(QMap<int, int>& map) const;
    void getListParamsCAN_Cmd_320(QMap<int, int>& map) const;

    // Lookups, one family per list. For a list X:
    //   getType...X(qsName, &n)     true when qsName names an entry of X; n its number
    //   getStrType...X(nNum)        type text of entry nNum ("" when X has none)
    //   getStrProtocolUser...X(nNum) the name of entry nNum ("" when X has none)
    //   getNumberType_...X(qsName)  type code (ZOR_UserParam_CAN::numberType) of the
    //                               named entry, 0 when qsName names none of X
    bool getTypeCAN_SC(const QString& qsName, int* lpNum = nullptr) const;
    QString getStrTypeCAN_SC(int nNum) const;
    QString getStrProtocolUserCAN_SC(int nNum) const;
    int getNumberType_CAN_SC(const QString& qsName) const;

    bool getTypeCAN_BC(const QString& qsName, int* lpNum = nullptr) const;
    QString getStrTypeCAN_BC(int nNum) const;
    QString getStrProtocolUserCAN_BC(int nNum) const;
    int getNumberType_CAN_BC(const QString& qsName) const;

    bool getTypeCAN_AC(const QString& qsName, int* lpNum = nullptr) const;
    QString getStrTypeCAN_AC(int nNum) const;
    QString getStrProtocolUserCAN_AC(int nNum) const;
    int getNumberType_CAN_AC(const QString& qsName) const;

    bool getTypeACond_CO(const QString& qsName, int* lpNum = nullptr) const;
    QString getStrTypeACond_CO(int nNum) const;
    QString getStrProtocolUserACond_CO(int nNum) const;
    int getNumberType_ACond_CO(const QString& qsName) const;

    bool getType_AX(const QString& qsName, int* lpNum = nullptr) const;
    QString getStrType_AX(int nNum) const;
    QString getStrProtocolUser_AX(int nNum) const;
    int getNumberType_AX(const QString& qsName) const;

    bool getTypeACond_RC(const QString& qsName, int* lpNum = nullptr) const;
    QString getStrTypeACond_RC(int nNum) const;
    QString getStrProtocolUserACond_RC(int nNum) const;
    int getNumberType_ACond_RC(const QString& qsName) const;

    // CE has no list: any number 1-255 with any known type is a CE parameter,
    // so its type comes from the name, and making a name needs the type.
    bool getType_CE(const QString& qsName, int* lpNum = nullptr) const;
    QString getStrType_CE(const QString& qsName) const;
    QString getStrProtocolUser_CE(int nNum, const QString& qsType) const;
    int getNumberType_CE(const QString& qsName) const;

    // "%1, %2" of the first two parts, or "%1, %2, %3" when the third is not empty.
    static QString getUserParamName(const QString& qsPart1, const QString& qsPart2, const QString& qsPart3 = QString());
    // Splits a name into prefix, middle and type text (empty when the name
    // has no known type text after its last comma). False when the name has
    // no prefix or no middle. The middle keeps its inner spacing.
    static bool splitUserParamName(const QString& qsName, QString* lpPrefix, QString* lpMiddle, QString* lpType);
    // Type text of a name: its own type part, or else the type of the
    // catalogue entry it names; "" when neither is known.
    QString getUserParamType4Name(const QString& qsName) const;
    // The full name, type part included, of the catalogue entry a name
    // designates ("SC, 1" -> "SC, 1, 2u"); "" when it names no entry.
    QString getUserParamName4Type(const QString& qsName) const;
    // Caption of the catalogue entry a name designates; "" when none.
    QString getUserParamTitle(const QString& qsName) const;

    // Width in bytes of a type text: 1, 2, 4 (and 8 for the 8-byte codes of
    // the shared data types); 0 for an unknown text.
    static int getSize_BT(const QString& qsType);

    // Every entry of SC, BC, AC, CO, RC and AX (in this order, bit sets whole,
    // no bits, no commands) as a user parameter: {prefix, number in decimal,
    // type text, width}. Clears the caller's vector first.
    void getUserParamEntries(QVector<ZOR_UserParamEntry>& entries) const;

    // Every language key the catalogue looks up (entries, bits, caption parts).
    static QStringList captionKeys();

private:
    const QVector<ZOR_UserParam_CAN*>* listForPrefix(const QString& qsPrefix) const;
    const ZOR_UserParam_CAN* entryNamed(const QString& qsName, const QString& qsPrefix) const;

    QVector<ZOR_UserParam_CAN*> lstSC;
    QVector<ZOR_UserParam_CAN*> lstBC;
    QVector<ZOR_UserParam_CAN*> lstAC;
    QVector<ZOR_UserParam_CAN*> lstCO;
    QVector<ZOR_UserParam_CAN*> lstAX;
    QVector<ZOR_UserParam_CAN*> lstRC;
    QVector<ZOR_UserParam_CAN*> lstCmd;
    QMap<int, int> mapSC_316;
    QMap<int, int> mapSC_320;
    QMap<int, int> mapAC_316;
    QMap<int, int> mapAC_320;
    QMap<int, int> mapCmd_316;
    QMap<int, int> mapCmd_320;
};

#endif
