// The host's reply assembler (ZOR_ReplyAssembler) fed arbitrary bytes in
// arbitrary pieces: byte 0 picks the piece sizes. Nothing may be lost,
// added or reordered, no block may pass the block limit, and every block
// but the last handed over at the end ends at a line end or the limit.

#include "zor_reply_assembler.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    new QCoreApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const int step = 1 + data[0] % 97;
    const QByteArray input(reinterpret_cast<const char*>(data) + 1, int(size) - 1);
    ZOR_ReplyAssembler assembler;
    QList<QByteArray> blocks;
    QObject::connect(
        &assembler, &ZOR_ReplyAssembler::signal_Reply, [&blocks](const QByteArray& bytes) { blocks << bytes; });
    for (int at = 0; at < input.size(); at += step)
        assembler.feed(input.mid(at, step));
    const int beforeFlush = blocks.size();
    assembler.flush();
    if (assembler.hasPending())
        __builtin_trap();
    QByteArray joined;
    for (int i = 0; i < blocks.size(); ++i) {
        const QByteArray& b = blocks.at(i);
        if (b.isEmpty() || b.size() > ZOR_ReplyAssembler::nMaxBlock)
            __builtin_trap();
        if (i < beforeFlush && !b.endsWith('\n') && b.size() != ZOR_ReplyAssembler::nMaxBlock)
            __builtin_trap(); // a block cut before its line end (no time passes here)
        joined += b;
    }
    if (joined != input)
        __builtin_trap();
    return 0;
}
