// Arbitrary bytes as a settings document: open through the memory-buffer
// entry point, walk every element with cursors reading every parameter,
// change values (with names and texts taken from the document itself), and
// render. Whatever the store agrees to render must read back and render
// again; a refusal must leave a reason. The fast reader and the SAX reader
// must agree on every input: same verdict, message and tree. A written
// document reads back as the tree it was written from (as its encoding
// stores text: characters above U+FFFF included).

#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"

#include <cstddef>
#include <cstdint>

#include <QByteArray>

namespace {

bool sameTree(const CXmlTagV2* a, const CXmlTagV2* b)
{
    if (a->name() != b->name() || a->value() != b->value() || a->kind() != b->kind()
        || a->children().count() != b->children().count() || a->attributes().size() != b->attributes().size())
        return false;
    for (int i = 0; i < a->attributes().size(); ++i)
        if (a->attributes().at(i).name != b->attributes().at(i).name
            || a->attributes().at(i).value != b->attributes().at(i).value)
            return false;
    for (int i = 0; i < a->children().count(); ++i)
        if (!sameTree(a->getNumTag(i), b->getNumTag(i)))
            return false;
    return true;
}

// b read back from the rendering of a, text as the encoding stores it.
bool sameWritten(const CXmlTagV2* a, const CXmlTagV2* b, const XmlWriter::Encoding& enc)
{
    const auto stored = [&enc](const QString& s) { return XmlWriter::storedText(s, enc); };
    if (stored(a->name()) != b->name() || a->children().count() != b->children().count()
        || a->attributes().size() != b->attributes().size())
        return false;
    if (a->children().count() == 0 && stored(a->value()) != b->value())
        return false;
    for (int i = 0; i < a->attributes().size(); ++i)
        if (stored(a->attributes().at(i).name) != b->attributes().at(i).name
            || stored(a->attributes().at(i).value) != b->attributes().at(i).value)
            return false;
    for (int i = 0; i < a->children().count(); ++i)
        if (!sameWritten(a->getNumTag(i), b->getNumTag(i), enc))
            return false;
    return true;
}

void compareReaders(const QByteArray& bytes)
{
    CSerialize fast;
    CSerialize sax;
    sax.setFastReader(false);
    const bool ok = fast.openData(bytes);
    if (ok != sax.openData(bytes) || fast.errorString() != sax.errorString()
        || fast.droppedMarkup() != sax.droppedMarkup() || fast.topTags().count() != sax.topTags().count())
        __builtin_trap();
    for (int i = 0; i < fast.topTags().count(); ++i)
        if (!sameTree(fast.topTags().getNumTag(i), sax.topTags().getNumTag(i)))
            __builtin_trap();
}

void walk(CXMLWorkData* cursor, int depth)
{
    CListParameters& list = cursor->parameters();
    QString text;
    for (int i = 0; i < list.count(); ++i) {
        const coreSzItem* item = list.item(i);
        cursor->readString(item->name, QString(), text);
        cursor->readInteger(item->name, 0);
        cursor->readDouble(item->name, 0.0);
        cursor->readColorString(item->name, QColor());
    }
    CXmlTagV2* tag = cursor->getTag();
    QStringList names;
    for (int i = 0; tag && i < tag->children().count(); ++i)
        if (!names.contains(tag->getNumTag(i)->name()))
            names << tag->getNumTag(i)->name();
    for (const QString& name : names) {
        for (CXMLWorkData* child = cursor->getFirstNode(name); child; cursor->moveToNextNode(child))
            walk(child, depth + 1);
    }
    if (depth == 1) {
        cursor->writeInteger("fuzz", depth);
        cursor->writeParameters();
        cursor->writeStringZOR(QStringLiteral("text"), text);
        // Texts of the document used as names: most are no XML names.
        if (!text.isEmpty() && tag) {
            tag->setTagValue(text, text);
            tag->addTagNode(text.left(8), text);
        }
    } else if (depth == 2) {
        // A cursor left on a cleared subtree must drop its writes.
        CXMLWorkData* first = cursor->getFirstNode(names.value(0));
        cursor->clearNode();
        if (first) {
            first->writeInteger("stale", 1);
            first->writeParameters();
            delete first;
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    compareReaders(QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size)));
    coreSzMemo memo{reinterpret_cast<const char*>(data), int(size), nullptr};
    if (!zor_StartSZMemo(&memo))
        return 0;
    CSerialize* doc = memo.lpSerialize;
    if (CXmlTagV2* root = doc->root()) {
        CXMLWorkData cursor(doc, root);
        walk(&cursor, 0);
    }
    coreSzMemo out{nullptr, 0, nullptr};
    if (zor_GetSZMemo(doc, &out)) {
        const QByteArray saved(out.lpData, out.nSize);
        coreSzMemo again{saved.constData(), saved.size(), nullptr};
        if (!zor_StartSZMemo(&again))
            __builtin_trap(); // the store rendered what it cannot read
        const CXmlTagV2* written = doc->root();
        const CXmlTagV2* read = again.lpSerialize->root();
        if (!written != !read || (written && !sameWritten(written, read, doc->encoding())))
            __builtin_trap(); // what was read back is not what was written
        coreSzMemo twice{nullptr, 0, nullptr};
        if (!zor_GetSZMemo(again.lpSerialize, &twice))
            __builtin_trap(); // what was saved once cannot be saved again
        zor_StopSZMemo(again.lpSerialize);
    } else if (doc->errorString().isEmpty()) {
        __builtin_trap(); // refused without a reason
    }
    zor_StopSZMemo(doc);
    return 0;
}
