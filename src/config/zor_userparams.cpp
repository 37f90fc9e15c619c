#include "config/zor_userparams.h"

#include "config/zor_datatypes.h"
#include "config/zor_userparams_tables.h"
#include "module/zor_global.h"
#include "module/zor_language.h"

#include <algorithm>
#include <iterator>

using namespace zor_catalogue;

namespace {

using EntryList = QVector<ZOR_UserParam_CAN*>;

template <std::size_t N>
void buildList(EntryList& list, const Row (&rows)[N], QObject* owner)
{
    qDeleteAll(list);
    list.clear();
    ZOR_UserParam_CAN* entry = nullptr;
    for (const Row& row : rows) {
        const QString qsKey = QLatin1String(row.lpKey);
        if (row.lpType) {
            entry = new ZOR_UserParam_CAN(owner);
            entry->setParam(list.size() + 1, row.nNum, QLatin1String(row.lpType), qsKey, zorTr(qsKey));
            list.append(entry);
        } else {
            entry->addParamBit(row.nNum, qsKey, zorTr(qsKey));
        }
    }
}

QString composedTitle(const AxRow& row)
{
    const QString qsText = zorTr(QLatin1String(row.lpKey));
    switch (row.compose) {
    case Compose::Pair: return QStringLiteral("%1, %2").arg(qsText, zorTr(QLatin1String(row.lpPartKey)));
    case Compose::Second: return QStringLiteral("%1, 2 %2").arg(qsText, zorTr(QLatin1String(row.lpPartKey)));
    case Compose::Key: break;
    }
    return qsText;
}

// Old numbers whose today's number is no longer (or not yet) in the list
// are dropped, so a reader never sets a bit that means nothing today.
template <std::size_t R, std::size_t N>
void buildRenumber(QMap<int, int>& map, const Renumber (&runs)[R], const Row (&rows)[N])
{
    map.clear();
    for (const Renumber& run : runs) {
        for (int nOld = run.nFirst; nOld <= run.nLast; ++nOld) {
            const int nNow = run.nCurrent + (nOld - run.nFirst);
            const bool bKnown = std::any_of(
                std::begin(rows), std::end(rows), [nNow](const Row& row) { return row.nNum == nNow; });
            if (bKnown)
                map.insert(nOld, nNow);
        }
    }
}

const ZOR_UserParam_CAN* findEntry(const EntryList& list, int nNum)
{
    const auto it = std::lower_bound(
        list.begin(), list.end(), nNum, [](const ZOR_UserParam_CAN* e, int n) { return e->getParam_Num() < n; });
    return it != list.end() && (*it)->getParam_Num() == nNum ? *it : nullptr;
}

bool readNumber(const QString& qsText, int* lpNum)
{
    bool bOk = false;
    const int nNum = qsText.toInt(&bOk);
    if (!bOk || nNum < 1 || nNum > 255)
        return false;
    *lpNum = nNum;
    return true;
}

} // namespace

ZOR_UserParams::ZOR_UserParams(QObject* parent)
    : QObject(parent)
{
    translateClass();
    createList_SC_316();
    createList_SC_320();
    createList_AC_316();
    createList_AC_320();
    createList_Cmd_316();
    createList_Cmd_320();
}

ZOR_UserParams::~ZOR_UserParams()
{
    for (EntryList* list : {&lstSC, &lstBC, &lstAC, &lstCO, &lstAX, &lstRC, &lstCmd})
        qDeleteAll(*list);
}

void ZOR_UserParams::translateClass()
{
    createList_SC();
    createList_BC();
    createList_AC();
    createList_CO();
    createList_AX();
    createList_RC();
    createList_Cmd();
}

void ZOR_UserParams::createList_SC()
{
    buildList(lstSC, kRows_SC, this);
}
void ZOR_UserParams::createList_BC()
{
    buildList(lstBC, kRows_BC, this);
}
void ZOR_UserParams::createList_AC()
{
    buildList(lstAC, kRows_AC, this);
}
void ZOR_UserParams::createList_CO()
{
    buildList(lstCO, kRows_CO, this);
}
void ZOR_UserParams::createList_RC()
{
    buildList(lstRC, kRows_RC, this);
}
void ZOR_UserParams::createList_Cmd()
{
    buildList(lstCmd, kRows_Cmd, this);
}

void ZOR_UserParams::createList_AX()
{
    qDeleteAll(lstAX);
    lstAX.clear();
    for (const AxRow& row : kRows_AX) {
        auto* entry = new ZOR_UserParam_CAN(this);
        entry->setParam(
            lstAX.size() + 1, row.nNum, QLatin1String(row.lpType), QLatin1String(row.lpKey), composedTitle(row));
        lstAX.append(entry);
    }
}

void ZOR_UserParams::getListParamsCAN_SC(EntryList& list) const
{
    list = lstSC;
}
void ZOR_UserParams::getListParamsCAN_BC(EntryList& list) const
{
    list = lstBC;
}
void ZOR_UserParams::getListParamsCAN_AC(EntryList& list) const
{
    list = lstAC;
}
void ZOR_UserParams::getListParams_CO(EntryList& list) const
{
    list = lstCO;
}
void ZOR_UserParams::getListParams_AX(EntryList& list) const
{
    list = lstAX;
}
void ZOR_UserParams::getListParams_RC(EntryList& list) const
{
    list = lstRC;
}
void ZOR_UserParams::getListParamsCAN_Cmd(EntryList& list) const
{
    list = lstCmd;
}

void ZOR_UserParams::createList_SC_316()
{
    buildRenumber(mapSC_316, kRenumber_SC_316, kRows_SC);
}
void ZOR_UserParams::createList_SC_320()
{
    buildRenumber(mapSC_320, kRenumber_SC_320, kRows_SC);
}
void ZOR_UserParams::createList_AC_316()
{
    buildRenumber(mapAC_316, kRenumber_AC_316, kRows_AC);
}
void ZOR_UserParams::createList_AC_320()
{
    buildRenumber(mapAC_320, kRenumber_AC_320, kRows_AC);
}
void ZOR_UserParams::createList_Cmd_316()
{
    buildRenumber(mapCmd_316, kRenumber_Cmd_316, kRows_Cmd);
}
void ZOR_UserParams::createList_Cmd_320()
{
    buildRenumber(mapCmd_320, kRenumber_Cmd_320, kRows_Cmd);
}

void ZOR_UserParams::getListParamsCAN_SC_316(QMap<int, int>& map) const
{
    map = mapSC_316;
}
void ZOR_UserParams::getListParamsCAN_SC_320(QMap<int, int>& map) const
{
    map = mapSC_320;
}
void ZOR_UserParams::getListParamsCAN_AC_316(QMap<int, int>& map) const
{
    map = mapAC_316;
}
void ZOR_UserParams::getListParamsCAN_AC_320(QMap<int, int>& map) const
{
    map = mapAC_320;
}
void ZOR_UserParams::getListParamsCAN_Cmd_316(QMap<int, int>& map) const
{
    map = mapCmd_316;
}
void ZOR_UserParams::getListParamsCAN_Cmd_320(QMap<int, int>& map) const
{
    map = mapCmd_320;
}

QString ZOR_UserParams::getUserParamName(const QString& qsPart1, const QString& qsPart2, const QString& qsPart3)
{
    if (qsPart3.isEmpty())
        return QStringLiteral("%1, %2").arg(qsPart1, qsPart2);
    return QStringLiteral("%1, %2, %3").arg(qsPart1, qsPart2, qsPart3);
}

bool ZOR_UserParams::splitUserParamName(const QString& qsName, QString* lpPrefix, QString* lpMiddle, QString* lpType)
{
    const int nFirst = qsName.indexOf(QLatin1Char(','));
    if (nFirst < 0)
        return false;
    const int nLast = qsName.lastIndexOf(QLatin1Char(','));
    const QString qsPrefix = qsName.left(nFirst).trimmed();
    QString qsType;
    QString qsMiddle = qsName.mid(nFirst + 1).trimmed();
    if (nLast > nFirst) {
        const QString qsTail = qsName.mid(nLast + 1).trimmed();
        if (ZOR_UserParam_CAN::numberType(qsTail) != 0) {
            qsType = qsTail;
            qsMiddle = qsName.mid(nFirst + 1, nLast - nFirst - 1).trimmed();
        }
    }
    if (qsPrefix.isEmpty() || qsMiddle.isEmpty())
        return false;
    if (lpPrefix)
        *lpPrefix = qsPrefix;
    if (lpMiddle)
        *lpMiddle = qsMiddle;
    if (lpType)
        *lpType = qsType;
    return true;
}

const EntryList* ZOR_UserParams::listForPrefix(const QString& qsPrefix) const
{
    if (qsPrefix == glqsCanPreffix_SC)
        return &lstSC;
    if (qsPrefix == glqsCanPreffix_BC)
        return &lstBC;
    if (qsPrefix == glqsCanPreffix_AC)
        return &lstAC;
    if (qsPrefix == glqsPcntPreffix_CO)
        return &lstCO;
    if (qsPrefix == glqsRefrPreffix_RC)
        return &lstRC;
    if (qsPrefix == glqsRefrPreffix_AX)
        return &lstAX;
    return nullptr;
}

// The entry of the list with prefix qsPrefix (any list when it is empty)
// that qsName designates.
const ZOR_UserParam_CAN* ZOR_UserParams::entryNamed(const QString& qsName, const QString& qsPrefix) const
{
    QString qsOwnPrefix, qsMiddle, qsType;
    int nNum = 0;
    if (!splitUserParamName(qsName, &qsOwnPrefix, &qsMiddle, &qsType) || !readNumber(qsMiddle, &nNum))
        return nullptr;
    if (!qsPrefix.isEmpty() && qsOwnPrefix != qsPrefix)
        return nullptr;
    const EntryList* list = listForPrefix(qsOwnPrefix);
    const ZOR_UserParam_CAN* entry = list ? findEntry(*list, nNum) : nullptr;
    if (entry && !qsType.isEmpty() && qsType != entry->getStrNumberType())
        return nullptr;
    return entry;
}

namespace {
struct ListLookup
{
    const EntryList& list;
    const QString& qsPrefix;

    QString type(int nNum) const
    {
        const ZOR_UserParam_CAN* entry = findEntry(list, nNum);
        return entry ? entry->getStrNumberType() : QString();
    }
    QString name(int nNum) const
    {
        const ZOR_UserParam_CAN* entry = findEntry(list, nNum);
        return entry ? ZOR_UserParams::getUserParamName(qsPrefix, QString::number(nNum), entry->getStrNumberType())
                     : QString();
    }
};

bool reportNumber(const ZOR_UserParam_CAN* entry, int* lpNum)
{
    if (entry && lpNum)
        *lpNum = entry->getParam_Num();
    return entry != nullptr;
}

int typeCode(const ZOR_UserParam_CAN* entry)
{
    return entry ? entry->getNumberType() : 0;
}
} // namespace

#define ZOR_LIST_LOOKUPS(TYPE, STRTYPE, PROTOCOL, NUMBERTYPE, LIST, PREFIX)                                            \
    bool ZOR_UserParams::TYPE(const QString& qsName, int* lpNum) const                                                 \
    {                                                                                                                  \
        return reportNumber(entryNamed(qsName, PREFIX), lpNum);                                                        \
    }                                                                                                                  \
    QString ZOR_UserParams::STRTYPE(int nNum) const                                                                    \
    {                                                                                                                  \
        return ListLookup{LIST, PREFIX}.type(nNum);                                                                    \
    }                                                                                                                  \
    QString ZOR_UserParams::PROTOCOL(int nNum) const                                                                   \
    {                                                                                                                  \
        return ListLookup{LIST, PREFIX}.name(nNum);                                                                    \
    }                                                                                                                  \
    int ZOR_UserParams::NUMBERTYPE(const QString& qsName) const                                                        \
    {                                                                                                                  \
        return typeCode(entryNamed(qsName, PREFIX));                                                                   \
    }

ZOR_LIST_LOOKUPS(
    getTypeCAN_SC, getStrTypeCAN_SC, getStrProtocolUserCAN_SC, getNumberType_CAN_SC, lstSC, glqsCanPreffix_SC)
ZOR_LIST_LOOKUPS(
    getTypeCAN_BC, getStrTypeCAN_BC, getStrProtocolUserCAN_BC, getNumberType_CAN_BC, lstBC, glqsCanPreffix_BC)
ZOR_LIST_LOOKUPS(
    getTypeCAN_AC, getStrTypeCAN_AC, getStrProtocolUserCAN_AC, getNumberType_CAN_AC, lstAC, glqsCanPreffix_AC)
ZOR_LIST_LOOKUPS(
    getTypeACond_CO, getStrTypeACond_CO, getStrProtocolUserACond_CO, getNumberType_ACond_CO, lstCO, glqsPcntPreffix_CO)
ZOR_LIST_LOOKUPS(getType_AX, getStrType_AX, getStrProtocolUser_AX, getNumberType_AX, lstAX, glqsRefrPreffix_AX)
ZOR_LIST_LOOKUPS(
    getTypeACond_RC, getStrTypeACond_RC, getStrProtocolUserACond_RC, getNumberType_ACond_RC, lstRC, glqsRefrPreffix_RC)

#undef ZOR_LIST_LOOKUPS

bool ZOR_UserParams::getType_CE(const QString& qsName, int* lpNum) const
{
    QString qsPrefix, qsMiddle, qsType;
    int nNum = 0;
    if (!splitUserParamName(qsName, &qsPrefix, &qsMiddle, &qsType) || qsPrefix != glqsCEPreffix_CE || qsType.isEmpty()
        || !readNumber(qsMiddle, &nNum))
        return false;
    if (lpNum)
        *lpNum = nNum;
    return true;
}

QString ZOR_UserParams::getStrType_CE(const QString& qsName) const
{
    QString qsType;
    return getType_CE(qsName) && splitUserParamName(qsName, nullptr, nullptr, &qsType) ? qsType : QString();
}

QString ZOR_UserParams::getStrProtocolUser_CE(int nNum, const QString& qsType) const
{
    if (nNum < 1 || nNum > 255 || ZOR_UserParam_CAN::numberType(qsType) == 0)
        return QString();
    return getUserParamName(glqsCEPreffix_CE, QString::number(nNum), qsType);
}

int ZOR_UserParams::getNumberType_CE(const QString& qsName) const
{
    return ZOR_UserParam_CAN::numberType(getStrType_CE(qsName));
}

QString ZOR_UserParams::getUserParamType4Name(const QString& qsName) const
{
    QString qsType;
    if (!splitUserParamName(qsName, nullptr, nullptr, &qsType))
        return QString();
    if (!qsType.isEmpty())
        return qsType;
    const ZOR_UserParam_CAN* entry = entryNamed(qsName, QString());
    return entry ? entry->getStrNumberType() : QString();
}

QString ZOR_UserParams::getUserParamName4Type(const QString& qsName) const
{
    QString qsPrefix;
    const ZOR_UserParam_CAN* entry = splitUserParamName(qsName, &qsPrefix, nullptr, nullptr)
        ? entryNamed(qsName, QString())
        : nullptr;
    return entry ? getUserParamName(qsPrefix, QString::number(entry->getParam_Num()), entry->getStrNumberType())
                 : QString();
}

QString ZOR_UserParams::getUserParamTitle(const QString& qsName) const
{
    const ZOR_UserParam_CAN* entry = entryNamed(qsName, QString());
    return entry ? entry->getParamTitle() : QString();
}

int ZOR_UserParams::getSize_BT(const QString& qsType)
{
    return ZOR_DataTypes::sizeOf(qsType);
}

void ZOR_UserParams::getUserParamEntries(QVector<ZOR_UserParamEntry>& entries) const
{
    entries.clear();
    const std::pair<const EntryList*, const QString*> lists[] = {{&lstSC, &glqsCanPreffix_SC},
        {&lstBC, &glqsCanPreffix_BC}, {&lstAC, &glqsCanPreffix_AC}, {&lstCO, &glqsPcntPreffix_CO},
        {&lstRC, &glqsRefrPreffix_RC}, {&lstAX, &glqsRefrPreffix_AX}};
    for (const auto& list : lists) {
        for (const ZOR_UserParam_CAN* entry : *list.first) {
            ZOR_UserParamEntry item;
            item.qsPrefix = *list.second;
            item.qsMess = QString::number(entry->getParam_Num());
            item.qsSuffix = entry->getStrNumberType();
            item.nSize = getSize_BT(item.qsSuffix);
            entries.append(item);
        }
    }
}

QStringList ZOR_UserParams::captionKeys()
{
    QStringList keys;
    const auto addRows = [&keys](const auto& rows) {
        for (const Row& row : rows)
            keys.append(QLatin1String(row.lpKey));
    };
    addRows(kRows_SC);
    addRows(kRows_BC);
    addRows(kRows_AC);
    addRows(kRows_CO);
    addRows(kRows_RC);
    addRows(kRows_Cmd);
    for (const AxRow& row : kRows_AX) {
        keys.append(QLatin1String(row.lpKey));
        if (row.lpPartKey)
            keys.append(QLatin1String(row.lpPartKey));
    }
    keys.removeDuplicates();
    return keys;
}
