#include "store/cxmlworkdata.h"

#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "module/zor_cp1251.h"

#include <QHash>

#include <cstdlib>
#include <cstring>

namespace {

void encodeInto(char* lpDst, const QString& qsText)
{
    COneParameter::copyName(lpDst, qsText);
}

QString decodeField(const char* lpText)
{
    return ZOR_Cp1251::decode(lpText, int(std::strlen(lpText)));
}

QString nameOf(const char* lpName)
{
    char cut[coreSzItem::nMaxTextSize];
    COneParameter::copyText(cut, lpName);
    return decodeField(cut);
}

// The first of each name among an element's attributes or children. A
// record holds a name cut at nMaxTextLength, so a longer name is also known
// by its cut: it must be found again rather than get a cut twin.
struct NameIndex
{
    QHash<QString, int> exact;
    QHash<QByteArray, int> cut;
    bool built = false;

    void add(const QString& qsName, int nIndex)
    {
        exact.insert(qsName, nIndex);
        if (qsName.size() > coreSzItem::nMaxTextLength) {
            char key[coreSzItem::nMaxTextSize];
            encodeInto(key, qsName);
            cut.insert(QByteArray(key), nIndex);
        }
    }
    int find(const char* lpName) const
    {
        const auto hit = exact.constFind(decodeField(lpName));
        if (hit != exact.constEnd())
            return hit.value();
        if (cut.isEmpty() || std::strlen(lpName) < size_t(coreSzItem::nMaxTextLength))
            return -1;
        return cut.value(QByteArray(lpName), -1);
    }
};

struct FontFlag
{
    const char* name;
    bool (QFont::*get)() const;
    void (QFont::*set)(bool);
};

const FontFlag kFontFlags[] = {
    {"Strikeout", &QFont::strikeOut, &QFont::setStrikeOut},
    {"Underline", &QFont::underline, &QFont::setUnderline},
};

} // namespace

CXMLWorkData::CXMLWorkData(const QString& qsFileName, const QString& qsNodeName)
{
    CSerialize* doc = new CSerialize;
    if (!doc->openFile(qsFileName)) {
        m_qsError = doc->errorString();
        delete doc;
        return;
    }
    m_lpSerialize = doc;
    m_bOwnsSerialize = true;
    inicParameters(doc, qsNodeName);
}

CXMLWorkData::CXMLWorkData(CSerialize* lpSerialize, const QString& qsNodeName)
{
    inicParameters(lpSerialize, qsNodeName);
}

CXMLWorkData::CXMLWorkData(CSerialize* lpSerialize, CXmlTagV2* lpNode)
{
    inicParameters(lpSerialize, lpNode);
}

CXMLWorkData::~CXMLWorkData()
{
    if (m_bOwnsSerialize)
        delete m_lpSerialize;
}

bool CXMLWorkData::closeDocument(bool bSave)
{
    if (!m_bOwnsSerialize || !m_lpSerialize) {
        if (m_qsError.isEmpty())
            m_qsError = QStringLiteral("no document is open");
        return false;
    }
    const bool ok = !bSave || m_lpSerialize->save();
    m_qsError = ok ? QString() : m_lpSerialize->errorString();
    delete m_lpSerialize;
    m_lpSerialize = nullptr;
    m_lpTag = nullptr;
    m_bOwnsSerialize = false;
    m_list.clear();
    return ok;
}

QString CXMLWorkData::errorString() const
{
    if (!m_qsError.isEmpty() || !m_lpSerialize)
        return m_qsError;
    return m_lpSerialize->errorString();
}

bool CXMLWorkData::inicParameters(CSerialize* lpSerialize, const QString& qsNodeName)
{
    CSerialize* doc = lpSerialize ? lpSerialize : m_lpSerialize;
    return inicParameters(doc, doc ? doc->topNode(qsNodeName, true) : nullptr);
}

bool CXMLWorkData::inicParameters(CSerialize* lpSerialize, CXmlTagV2* lpNode)
{
    if (m_bOwnsSerialize && lpSerialize != m_lpSerialize) {
        delete m_lpSerialize;
        m_bOwnsSerialize = false;
    }
    m_lpSerialize = lpSerialize;
    m_lpTag = lpSerialize && lpSerialize->isGoodTag(lpNode) ? lpNode : nullptr;
    m_nIndexInParent = -1;
    m_qsIterName.clear();
    m_nIterNext = 0;
    readParameters();
    return m_lpTag != nullptr;
}

bool CXMLWorkData::isValid() const
{
    return m_lpSerialize && m_lpSerialize->isGoodTag(m_lpTag);
}

void CXMLWorkData::readParameters()
{
    m_list.clear();
    if (!isValid())
        return;
    const QVector<CXmlAttribute>& attributes = m_lpTag->attributes();
    if (!attributes.isEmpty()) {
        coreSzItem* item = m_list.grow(attributes.size());
        if (!item)
            return;
        for (const CXmlAttribute& a : attributes) {
            encodeInto(item->name, a.name);
            encodeInto(item->value, a.value);
            item->kind = coreSzItem::KindValue;
            item->node = nullptr;
            ++item;
        }
    }
    m_list.appendTags(m_lpTag->children());
}

bool CXMLWorkData::writeParameters()
{
    if (!isValid())
        return false;
    // An element may have a hundred thousand children or attributes: each
    // record finds its own through the handle readParameters recorded or
    // through one index built on first need, never by a search per record.
    NameIndex attributes;
    NameIndex children;
    const bool sameChildren = m_list.tagsStillIn(m_lpTag->children());
    for (int i = 0; i < m_list.count(); ++i) {
        // The record of a child nobody looked at is that child, still there
        // unless the children changed since.
        if (const CXmlTagV2* child = m_list.untouchedTag(i))
            if (sameChildren || (child->parent() == m_lpTag && !child->isDetached()))
                continue;
        const coreSzItem* item = m_list.item(i);
        if (item->kind == coreSzItem::KindTag) {
            if (item->node && item->node->parent() == m_lpTag && !item->node->isDetached())
                continue;
            if (!children.built) {
                const CFxXmListlTag& list = m_lpTag->children();
                for (int c = list.count() - 1; c >= 0; --c)
                    children.add(list.getNumTag(c)->name(), c);
                children.built = true;
            }
            if (children.find(item->name) < 0)
                children.add(m_lpTag->addTagNode(decodeField(item->name))->name(), m_lpTag->children().count() - 1);
            continue;
        }
        if (!attributes.built) {
            const QVector<CXmlAttribute>& list = m_lpTag->attributes();
            for (int a = list.size() - 1; a >= 0; --a)
                attributes.add(list.at(a).name, a);
            attributes.built = true;
        }
        const QString value = decodeField(item->value);
        const int at = attributes.find(item->name);
        if (at >= 0) {
            m_lpTag->attributesRef()[at].value = value;
        } else {
            const QString name = decodeField(item->name);
            attributes.add(name, m_lpTag->attributes().size());
            m_lpTag->addTagValue(name, value);
        }
    }
    if (!m_lpTag->attributes().isEmpty() && m_lpTag->kind() != CXmlTagV2::KindText)
        m_lpTag->setKind(CXmlTagV2::KindAttributes);
    return true;
}

int CXMLWorkData::getCountParamsInTag() const
{
    return isValid() ? m_lpTag->attributes().size() : 0;
}

void CXMLWorkData::clearNode()
{
    m_list.clear();
    if (isValid())
        m_lpSerialize->clearTag(m_lpTag);
}

const coreSzItem* CXMLWorkData::findValue(const char* lpName)
{
    for (const coreSzItem* item = m_list.getFirst(lpName); item; item = m_list.getNext())
        if (item->kind == coreSzItem::KindValue && item->value[0])
            return item;
    return nullptr;
}

template <typename T>
T CXMLWorkData::readValue(const char* lpName, T defaultValue, bool (COneParameter::*as)(T&) const)
{
    if (const coreSzItem* item = findValue(lpName))
        (COneParameter(*item).*as)(defaultValue);
    return defaultValue;
}

int CXMLWorkData::readInteger(const char* lpName, int nDefault)
{
    return readValue(lpName, nDefault, &COneParameter::asInt);
}

bool CXMLWorkData::readBool(const char* lpName, bool bDefault)
{
    return readValue(lpName, bDefault, &COneParameter::asBool);
}

float CXMLWorkData::readFloat(const char* lpName, float fDefault)
{
    return readValue(lpName, fDefault, &COneParameter::asFloat);
}

double CXMLWorkData::readDouble(const char* lpName, double dDefault)
{
    return readValue(lpName, dDefault, &COneParameter::asDouble);
}

bool CXMLWorkData::readString(const char* lpName, const char* lpDefault, char* lpDst, int nLength)
{
    if (!lpDst || nLength <= 0)
        return false;
    const coreSzItem* item = findValue(lpName);
    const char* src = item ? item->value : (lpDefault ? lpDefault : "");
    std::strncpy(lpDst, src, size_t(nLength));
    lpDst[nLength - 1] = '\0';
    return item != nullptr;
}

bool CXMLWorkData::readString(const char* lpName, const QString& qsDefault, QString& qsValue)
{
    const coreSzItem* item = findValue(lpName);
    qsValue = item ? decodeField(item->value) : qsDefault;
    return item != nullptr;
}

QColor CXMLWorkData::readColor(const char* lpName, const QColor& clDefault)
{
    const coreSzItem* item = findValue(lpName);
    if (!item)
        return clDefault;
    int argb = 0;
    COneParameter(*item).asInt(argb);
    return QColor::fromRgba(static_cast<QRgb>(argb));
}

QColor CXMLWorkData::readColorString(const char* lpName, const QColor& clDefault)
{
    QString text;
    if (!readString(lpName, QString(), text))
        return clDefault;
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() < 3)
        return clDefault;
    int rgb[3];
    for (int i = 0; i < 3; ++i) {
        const QByteArray part = parts.at(i).trimmed().toLatin1();
        rgb[i] = qBound(0, int(std::strtol(part.constData(), nullptr, 10)), 255);
    }
    return QColor(rgb[0], rgb[1], rgb[2], 255);
}

QFont CXMLWorkData::readFont(const char* lpName, const QFont& fnDefault)
{
    QFont font = fnDefault;
    CXmlTagV2* tag = isValid() ? m_lpTag->getTagFromName(nameOf(lpName)) : nullptr;
    if (!tag)
        return font;
    CXMLWorkData node(m_lpSerialize, tag);
    QString family;
    if (node.readString("Family", QString(), family))
        font.setFamily(family);
    const int size = node.readInteger("Size", -1);
    if (size > 0)
        font.setPointSize(size);
    if (node.findValue("Bold"))
        font.setWeight(node.readBool("Bold", false) ? QFont::Bold : QFont::Normal);
    if (node.findValue("Italic"))
        font.setItalic(node.readBool("Italic", false));
    for (const FontFlag& flag : kFontFlags)
        if (node.findValue(flag.name))
            (font.*flag.set)(node.readBool(flag.name, false));
    return font;
}

void CXMLWorkData::setParameter(const COneParameter& param)
{
    if (m_lpTag)
        m_list.setParameter(param);
}

void CXMLWorkData::writeInteger(const char* lpName, int nValue)
{
    setParameter(COneParameter(lpName, nValue));
}

void CXMLWorkData::writeBool(const char* lpName, bool bValue)
{
    setParameter(COneParameter(lpName, bValue));
}

void CXMLWorkData::writeFloat(const char* lpName, float fValue)
{
    setParameter(COneParameter(lpName, fValue));
}

void CXMLWorkData::writeString(const char* lpName, const QString& qsValue)
{
    setParameter(COneParameter(lpName, qsValue));
}

void CXMLWorkData::writeTag(const char* lpName)
{
    setParameter(COneParameter(lpName));
}

void CXMLWorkData::writeColor(const char* lpName, const QColor& clValue)
{
    writeInteger(lpName, static_cast<int>(clValue.rgba()));
}

void CXMLWorkData::writeFont(const char* lpName, const QFont& fnValue)
{
    CXMLWorkData* node = createNode(nameOf(lpName), NodeFindOrAppend);
    node->writeString("Family", fnValue.family());
    node->writeInteger("Size", fnValue.pointSize());
    node->writeBool("Bold", fnValue.weight() >= 58);
    node->writeBool("Italic", fnValue.style() != QFont::StyleNormal);
    for (const FontFlag& flag : kFontFlags)
        node->writeBool(flag.name, (fnValue.*flag.get)());
    node->writeParameters();
    delete node;
}

CXmlTagV2* CXMLWorkData::findChild(const QString& qsName, int nFrom, int* lpIndex) const
{
    return isValid() ? m_lpTag->children().getTagFromName(qsName, nFrom, lpIndex) : nullptr;
}

CXMLWorkData* CXMLWorkData::childCursor(CXmlTagV2* tag, int nIndex)
{
    CXMLWorkData* node = new CXMLWorkData(m_lpSerialize, tag);
    node->m_nIndexInParent = nIndex;
    return node;
}

CXMLWorkData* CXMLWorkData::getFirstNode(const QString& qsName)
{
    m_qsIterName = qsName;
    m_nIterNext = 0;
    return getNextNode();
}

CXMLWorkData* CXMLWorkData::getNextNode()
{
    int index = 0;
    CXmlTagV2* tag = findChild(m_qsIterName, m_nIterNext, &index);
    if (!tag) {
        m_nIterNext = INT_MAX;
        return nullptr;
    }
    m_nIterNext = index + 1;
    return childCursor(tag, index);
}

void CXMLWorkData::moveToNextNode(CXMLWorkData*& lpNode)
{
    if (!lpNode)
        return;
    CXMLWorkData* next = nullptr;
    CXmlTagV2* tag = lpNode->isValid() ? lpNode->m_lpTag : nullptr;
    CXmlTagV2* parent = tag ? tag->parent() : nullptr;
    if (parent) {
        const CFxXmListlTag& siblings = parent->children();
        int index = lpNode->m_nIndexInParent;
        if (siblings.getNumTag(index) != tag)
            index = siblings.indexOf(tag);
        int found = 0;
        if (CXmlTagV2* sibling = siblings.getTagFromName(tag->name(), index + 1, &found)) {
            next = new CXMLWorkData(lpNode->m_lpSerialize, sibling);
            next->m_nIndexInParent = found;
        }
    }
    delete lpNode;
    lpNode = next;
}

CXMLWorkData* CXMLWorkData::createNode(const QString& qsName, int nKind)
{
    if (!isValid())
        return new CXMLWorkData(nullptr, static_cast<CXmlTagV2*>(nullptr));
    int index = -1;
    CXmlTagV2* tag = nKind == NodeFindOrAppend ? findChild(qsName, 0, &index) : nullptr;
    if (!tag) {
        tag = m_lpTag->addTagNode(qsName);
        index = m_lpTag->children().count() - 1;
    }
    return childCursor(tag, index);
}

CXMLWorkData* CXMLWorkData::createNodeZOR(const QString& qsName, const QString& qsValue)
{
    CXMLWorkData* node = createNode(qsName, NodeFindOrAppend);
    if (node->isValid()) {
        node->m_lpTag->setKind(CXmlTagV2::KindText);
        node->m_lpTag->setValue(qsValue);
    }
    return node;
}

CXMLWorkData* CXMLWorkData::createNodeZOR(const QString& qsName, int nValue)
{
    return createNodeZOR(qsName, QString::number(nValue));
}

CXMLWorkData* CXMLWorkData::createNodeZOR(const QString& qsName, float fValue)
{
    return createNodeZOR(qsName, QString::fromLatin1(COneParameter("", fValue).value));
}

void CXMLWorkData::writeStringZOR(const QString& qsName, const QString& qsValue)
{
    delete createNodeZOR(qsName, qsValue);
}

void CXMLWorkData::writeIntegerZOR(const QString& qsName, int nValue)
{
    delete createNodeZOR(qsName, nValue);
}

void CXMLWorkData::writeFloatZOR(const QString& qsName, float fValue)
{
    delete createNodeZOR(qsName, fValue);
}

void CXMLWorkData::writeIntegerZOR(const QString& qsName, Qt::CheckState nState)
{
    switch (nState) {
    case Qt::Unchecked: writeIntegerZOR(qsName, 0); break;
    case Qt::PartiallyChecked:
    case Qt::Checked: writeIntegerZOR(qsName, 1); break;
    default: break;
    }
}
