#include "config/zor_configdocument.h"

#include "config/zor_configpages.h"
#include "config/zor_form_config.h"
#include "config/zor_userparamregistry.h"
#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"

#include <QFileInfo>

const char* const ZOR_ConfigDocument::qsRootName = "CONFIG";

namespace {

// Counts nested loads so that edits caused by loading are not taken for the
// user's.
struct LoadingScope
{
    explicit LoadingScope(int& n)
        : counter(n)
    {
        ++counter;
    }
    ~LoadingScope() { --counter; }
    int& counter;
};

} // namespace

ZOR_ConfigDocument::ZOR_ConfigDocument(QObject* parent)
    : QObject(parent)
    , m_lpRegistry(new ZOR_UserParamRegistry(this))
{
}

ZOR_ConfigDocument::~ZOR_ConfigDocument()
{
    qDeleteAll(m_owned);
}

void ZOR_ConfigDocument::createForms(QWidget* lpParent)
{
    createForms(lpParent, zorConfigPages());
}

void ZOR_ConfigDocument::createForms(QWidget* lpParent, const QVector<ZOR_ConfigPage>& pages)
{
    LoadingScope loading(m_nLoading);
    for (const ZOR_ConfigPage& page : pages) {
        ZOR_Form_Config* lpForm = page.create(lpParent);
        if (!lpParent)
            m_owned.append(lpForm);
        m_forms.append(lpForm);
        m_pages.append(page);
        connect(
            lpForm, &ZOR_Form_Config::signal_UserParam_Add, m_lpRegistry, &ZOR_UserParamRegistry::slot_UserParam_Add);
        connect(
            lpForm, &ZOR_Form_Config::signal_UserParam_Del, m_lpRegistry, &ZOR_UserParamRegistry::slot_UserParam_Del);
        connect(lpForm, &ZOR_Form_Config::signal_FormEdited, this, [this] {
            if (!isLoading())
                setModified(true);
        });
    }
    for (ZOR_Form_Config* lpForm : m_forms) {
        lpForm->setUserParamRegistry(m_lpRegistry);
        lpForm->applyProfile(m_profile);
    }
    newDocument();
}

ZOR_Form_Config* ZOR_ConfigDocument::form(const QString& qsId) const
{
    for (int i = 0; i < m_pages.size(); ++i)
        if (qsId == QLatin1String(m_pages[i].lpId))
            return m_forms[i];
    return nullptr;
}

void ZOR_ConfigDocument::setProfile(const ZOR_TerminalProfile& profile)
{
    LoadingScope loading(m_nLoading);
    m_profile = profile;
    for (ZOR_Form_Config* lpForm : m_forms)
        lpForm->applyProfile(m_profile);
}

void ZOR_ConfigDocument::translateForms()
{
    LoadingScope loading(m_nLoading);
    for (ZOR_Form_Config* lpForm : m_forms)
        lpForm->translateForm();
}

void ZOR_ConfigDocument::attach(std::unique_ptr<CSerialize> doc, const QString& qsFileName)
{
    m_doc = std::move(doc);
    m_qsFileName = qsFileName;
}

void ZOR_ConfigDocument::newDocument()
{
    {
        LoadingScope loading(m_nLoading);
        auto doc = std::make_unique<CSerialize>();
        doc->openData(QByteArray());
        attach(std::move(doc), QString());
        for (ZOR_Form_Config* lpForm : m_forms)
            lpForm->setDefaultParam();
    }
    m_problems.clear();
    m_bForeign = false;
    m_qsError.clear();
    setModified(false);
}

bool ZOR_ConfigDocument::load(const QString& qsFileName, ForeignRoot foreign)
{
    const QFileInfo info(qsFileName);
    if (!info.exists()) {
        m_qsError = tr("%1: no such file").arg(qsFileName);
        return false;
    }
    if (!info.isFile()) {
        m_qsError = tr("%1: not a file").arg(qsFileName);
        return false;
    }
    auto doc = std::make_unique<CSerialize>();
    if (!doc->openFile(qsFileName)) {
        m_qsError = doc->errorString().isEmpty() ? tr("%1: cannot be read").arg(qsFileName) : doc->errorString();
        return false;
    }
    const CXmlTagV2* lpTop = doc->root();
    const bool bEmpty = !lpTop;
    m_bForeign = lpTop && lpTop->name() != QLatin1String(qsRootName);
    if (m_bForeign && foreign == RefuseForeign) {
        m_qsError = tr("%1: not a configuration (its top element is \"%2\", not \"%3\")")
                        .arg(qsFileName, lpTop->name(), QLatin1String(qsRootName));
        return false;
    }
    {
        LoadingScope loading(m_nLoading);
        attach(std::move(doc), qsFileName);
        m_problems.clear();
        ZOR_ConfigProblems::Recording recording(&m_problems);
        readForms();
    }
    checkLoaded(bEmpty);
    m_qsError.clear();
    if (m_bForeign) {
        // What the forms took from the foreign file becomes a new document.
        auto fresh = std::make_unique<CSerialize>();
        fresh->openData(QByteArray());
        attach(std::move(fresh), QString());
        m_bModified = false;
        setModified(true);
        return true;
    }
    setModified(false);
    return true;
}

std::unique_ptr<CSerialize> ZOR_ConfigDocument::writeFresh()
{
    auto fresh = std::make_unique<CSerialize>();
    fresh->openData(QByteArray());
    CXMLWorkData root(fresh.get(), fresh->topNode(QString::fromLatin1(qsRootName), true));
    writeFormsTo(&root);
    return fresh;
}

bool ZOR_ConfigDocument::restore(const QByteArray& bytes)
{
    auto doc = std::make_unique<CSerialize>();
    if (!doc->openData(bytes)) {
        m_qsError = doc->errorString();
        return false;
    }
    if (m_doc)
        doc->continueFrom(*m_doc);
    LoadingScope loading(m_nLoading);
    attach(std::move(doc), m_qsFileName);
    readForms();
    return true;
}

QVector<ZOR_ConfigProblems::Read> ZOR_ConfigDocument::settingWidgets()
{
    CSerialize shown;
    if (!shown.openData(render()))
        return {};
    ZOR_ConfigProblems reads;
    {
        LoadingScope loading(m_nLoading);
        ZOR_ConfigProblems::Recording recording(&reads);
        CXMLWorkData root(&shown, shown.topNode(QString::fromLatin1(qsRootName), true));
        for (int pass = 0; pass < 2; ++pass)
            for (int i = 0; i < m_forms.size(); ++i)
                if (m_pages[i].bLoadLast == (pass == 1))
                    readForm(i, &root);
    }
    return reads.reads();
}

QByteArray ZOR_ConfigDocument::renderDefaults()
{
    const QByteArray current = render();
    QByteArray defaults;
    {
        LoadingScope loading(m_nLoading);
        for (ZOR_Form_Config* lpForm : m_forms)
            lpForm->setDefaultParam();
        writeFresh()->renderChecked(defaults);
    }
    restore(current);
    return defaults;
}

int ZOR_ConfigDocument::pageOf(const QWidget* lpWidget) const
{
    for (const QWidget* w = lpWidget; w; w = w->parentWidget())
        for (int i = 0; i < m_forms.size(); ++i)
            if (m_forms[i] == w)
                return i;
    return -1;
}

void ZOR_ConfigDocument::checkLoaded(bool bEmpty)
{
    const auto fresh = writeFresh();
    m_problems.compare(bEmpty ? nullptr : m_doc->root(), fresh->root(), QString::fromLatin1(qsRootName));
}

void ZOR_ConfigDocument::readForms()
{
    CXmlTagV2* lpTop = m_doc->root();
    CXMLWorkData root(m_doc.get(), lpTop ? lpTop : m_doc->topNode(QString::fromLatin1(qsRootName), true));
    for (ZOR_Form_Config* lpForm : m_forms)
        lpForm->setDefaultParam();
    for (int pass = 0; pass < 2; ++pass)
        for (int i = 0; i < m_forms.size(); ++i)
            if (m_pages[i].bLoadLast == (pass == 1))
                readForm(i, &root);
}

void ZOR_ConfigDocument::readForm(int nIndex, CXMLWorkData* lpRoot)
{
    if (!m_pages[nIndex].lpNode) {
        m_forms[nIndex]->readFormParam(lpRoot);
        return;
    }
    // A missing element leaves the defaults the form was just given.
    if (auto node = ZOR_SettingsNode::openForRead(lpRoot, QLatin1String(m_pages[nIndex].lpNode)))
        m_forms[nIndex]->readFormParam(node.get());
}

void ZOR_ConfigDocument::writeForms()
{
    if (!m_doc) {
        m_doc = std::make_unique<CSerialize>();
        m_doc->openData(QByteArray());
    }
    CXmlTagV2* lpTop = m_doc->root();
    CXMLWorkData root(m_doc.get(), lpTop ? lpTop : m_doc->topNode(QString::fromLatin1(qsRootName), true));
    writeFormsTo(&root);
}

void ZOR_ConfigDocument::writeFormsTo(CXMLWorkData* lpRoot)
{
    for (int i = 0; i < m_forms.size(); ++i) {
        if (!m_pages[i].lpNode) {
            m_forms[i]->writeFormParam(lpRoot);
            continue;
        }
        auto node = ZOR_SettingsNode::openForWrite(lpRoot, QLatin1String(m_pages[i].lpNode));
        m_forms[i]->writeFormParam(node.get());
    }
}

QByteArray ZOR_ConfigDocument::render()
{
    writeForms();
    QByteArray bytes;
    if (!m_doc->renderChecked(bytes)) {
        m_qsError = m_doc->errorString();
        return QByteArray();
    }
    return bytes;
}

bool ZOR_ConfigDocument::save(const QString& qsFileName)
{
    const QString qsTarget = qsFileName.isEmpty() ? m_qsFileName : qsFileName;
    if (qsTarget.isEmpty()) {
        m_qsError = tr("no file name to save to");
        return false;
    }
    writeForms();
    if (!m_doc->saveAs(qsTarget)) {
        m_qsError = m_doc->errorString().isEmpty() ? tr("%1: cannot be saved").arg(qsTarget) : m_doc->errorString();
        return false;
    }
    m_qsFileName = qsTarget;
    m_qsError.clear();
    setModified(false);
    return true;
}

bool ZOR_ConfigDocument::changedOnDisk() const
{
    return m_doc && !m_qsFileName.isEmpty() && m_doc->changedOnDisk();
}

void ZOR_ConfigDocument::acceptDiskState()
{
    if (m_doc)
        m_doc->acceptDiskState();
}

int ZOR_ConfigDocument::droppedMarkup() const
{
    return m_doc ? m_doc->droppedMarkup() : 0;
}

void ZOR_ConfigDocument::setModified(bool bModified)
{
    if (m_bModified == bModified)
        return;
    m_bModified = bModified;
    emit signal_ModifiedChanged(bModified);
}
