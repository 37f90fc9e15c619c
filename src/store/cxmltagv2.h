#ifndef CXMLTAGV2_H
#define CXMLTAGV2_H

// One element of a settings document: its name (decoded, as the user sees
// it), its text, its kind, its attributes in document order and its
// children in document order. The tag owns its children.

#include "store/cfxxmlistltag.h"

#include <QString>
#include <QVector>

struct CXmlAttribute
{
    QString name;
    QString value;
};

class CXmlTagV2
{
public:
    enum Kind {
        KindPlain = 0, // no attributes
        KindAttributes = 1, // an element with attributes
        KindText = 2 // written on one line as <name>text</name>
    };

    explicit CXmlTagV2(
        const QString& qsName, const QString& qsValue = QString(), int nKind = KindPlain, CXmlTagV2* parent = nullptr);
    CXmlTagV2(const CXmlTagV2&) = delete;
    CXmlTagV2& operator=(const CXmlTagV2&) = delete;

    const QString& name() const { return m_qsName; }
    const QString& value() const { return m_qsValue; }
    void setValue(const QString& qsValue) { m_qsValue = qsValue; }
    QString& valueRef() { return m_qsValue; }
    int kind() const { return m_nKind; }
    void setKind(int nKind) { m_nKind = nKind; }
    CXmlTagV2* parent() const { return m_parent; }
    // The line of the start tag in the file it was read from (from 1); 0 for
    // a tag made in memory.
    int line() const { return m_nLine; }
    void setLine(int nLine) { m_nLine = nLine; }

    const QVector<CXmlAttribute>& attributes() const { return m_attributes; }
    QVector<CXmlAttribute>& attributesRef() { return m_attributes; }
    void addTagValue(const QString& qsName, const QString& qsValue);
    // Replaces the value of an existing attribute or appends a new one.
    void setTagValue(const QString& qsName, const QString& qsValue);
    int attributeIndex(const QString& qsName) const;

    const CFxXmListlTag& children() const { return m_children; }
    CFxXmListlTag& children() { return m_children; }
    CXmlTagV2* addTagNode(const QString& qsName, const QString& qsValue = QString(), int nKind = KindPlain);
    CXmlTagV2* getTagFromName(const QString& qsName) const { return m_children.getTagFromName(qsName); }
    CXmlTagV2* getNumTag(int i) const { return m_children.getNumTag(i); }

    // Set on the top of a subtree removed from its document (see
    // CSerialize::isGoodTag); the subtree stays allocated until the
    // document is destroyed, so stale handles never dangle.
    bool isDetached() const { return m_bDetached; }
    void setDetached() { m_bDetached = true; }

private:
    QString m_qsName;
    QString m_qsValue;
    int m_nKind;
    int m_nLine = 0;
    bool m_bDetached = false;
    CXmlTagV2* m_parent;
    QVector<CXmlAttribute> m_attributes;
    CFxXmListlTag m_children;
};

#endif
