#ifndef CXMLWORKDATA_H
#define CXMLWORKDATA_H

// A cursor on one element of a settings document, with the element's
// parameters (attributes and child elements) copied into a CListParameters.
// This is what settings forms use.
//
// Reads come from the list, writes go to the list; nothing reaches the
// document until writeParameters(). A cursor without a document (the file
// could not be opened or parsed, or its element was cleared away) reads
// every default and drops every write; errorString() then says why the
// document could not be opened.
//
// Parameter names are Windows-1251 bytes (plain ASCII in practice); element
// names are strings. Cursors returned by pointer belong to the caller.
//
// Usual order of a form:
//   CXMLWorkData root(fileName, "USRPRMS");
//   ... read / write attributes and child nodes, writeParameters() on
//   every cursor that changed ...
//   root.closeDocument(true);   // saves the file

#include "store/clistparameters.h"

#include <QColor>
#include <QFont>
#include <QString>

class CSerialize;
class CXmlTagV2;

class CXMLWorkData
{
public:
    // Opens (creating when missing) the document of the file and positions on
    // its top-level element qsNodeName, created when absent. This cursor owns
    // the document: closeDocument() saves and releases it, the destructor
    // releases it without saving.
    CXMLWorkData(const QString& qsFileName, const QString& qsNodeName);
    // Cursors on an open document (not owned).
    CXMLWorkData(CSerialize* lpSerialize, const QString& qsNodeName);
    CXMLWorkData(CSerialize* lpSerialize, CXmlTagV2* lpNode);
    ~CXMLWorkData();
    CXMLWorkData(const CXMLWorkData&) = delete;
    CXMLWorkData& operator=(const CXMLWorkData&) = delete;

    bool inicParameters(CSerialize* lpSerialize, const QString& qsNodeName);
    bool inicParameters(CSerialize* lpSerialize, CXmlTagV2* lpNode);

    bool isValid() const;
    CSerialize* getSerialize() const { return m_lpSerialize; }
    CXmlTagV2* getTag() const { return m_lpTag; }
    CListParameters& parameters() { return m_list; }
    // Saves (when bSave) and releases a document this cursor owns; false when
    // it owns none or the save failed, with the reason in errorString(). A
    // failed save leaves the file as it was.
    bool closeDocument(bool bSave);
    // Why the document could not be opened or saved; empty when nothing
    // failed. A cursor on a shared document reports the document's error.
    QString errorString() const;

    int readInteger(const char* lpName, int nDefault);
    bool readBool(const char* lpName, bool bDefault);
    float readFloat(const char* lpName, float fDefault);
    double readDouble(const char* lpName, double dDefault);
    // Copies the value (or lpDefault) into lpDst of nLength bytes, NUL-ended.
    bool readString(const char* lpName, const char* lpDefault, char* lpDst, int nLength);
    bool readString(const char* lpName, const QString& qsDefault, QString& qsValue);
    QColor readColor(const char* lpName, const QColor& clDefault);
    // "r,g,b" with alpha 255; fewer than three numbers give the default.
    QColor readColorString(const char* lpName, const QColor& clDefault);
    QFont readFont(const char* lpName, const QFont& fnDefault);

    void writeInteger(const char* lpName, int nValue);
    void writeBool(const char* lpName, bool bValue);
    void writeFloat(const char* lpName, float fValue);
    void writeString(const char* lpName, const QString& qsValue);
    void writeTag(const char* lpName);
    // The signed 32-bit ARGB value: opaque colours are negative, white is -1.
    void writeColor(const char* lpName, const QColor& clValue);
    // A child element lpName with Family, Size, Bold, Italic, Strikeout and
    // Underline, written to the document at once.
    void writeFont(const char* lpName, const QFont& fnValue);

    CXMLWorkData* getFirstNode(const QString& qsName);
    CXMLWorkData* getNextNode();
    // Replaces lpNode by a cursor on its next sibling of the same name (null
    // when there is none) and deletes the old cursor.
    void moveToNextNode(CXMLWorkData*& lpNode);

    enum { NodeFindOrAppend = 0, NodeAppend = 3 };
    // nKind 0: the first child called qsName, appended when absent; any other
    // kind: always a new child.
    CXMLWorkData* createNode(const QString& qsName, int nKind);
    // A one-line <name>value</name> child (found or appended), set at once.
    CXMLWorkData* createNodeZOR(const QString& qsName, const QString& qsValue);
    CXMLWorkData* createNodeZOR(const QString& qsName, int nValue);
    CXMLWorkData* createNodeZOR(const QString& qsName, float fValue);
    void writeStringZOR(const QString& qsName, const QString& qsValue);
    void writeIntegerZOR(const QString& qsName, int nValue);
    void writeFloatZOR(const QString& qsName, float fValue);
    // 0 unchecked, 1 partially checked or checked; other values write nothing.
    void writeIntegerZOR(const QString& qsName, Qt::CheckState nState);

    int getCountParamsInTag() const;
    void clearNode();
    void readParameters();
    bool writeParameters();

private:
    const coreSzItem* findValue(const char* lpName);
    template <typename T>
    T readValue(const char* lpName, T defaultValue, bool (COneParameter::*as)(T&) const);
    void setParameter(const COneParameter& param);
    CXmlTagV2* findChild(const QString& qsName, int nFrom, int* lpIndex) const;
    CXMLWorkData* childCursor(CXmlTagV2* tag, int nIndex);

    CSerialize* m_lpSerialize = nullptr;
    CXmlTagV2* m_lpTag = nullptr;
    bool m_bOwnsSerialize = false;
    int m_nIndexInParent = -1;
    QString m_qsIterName;
    int m_nIterNext = 0;
    CListParameters m_list;
    QString m_qsError;
};

#endif
