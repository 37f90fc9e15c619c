// The simulated terminal's request parser (ZOR_TerminalSimulator) fed
// arbitrary bytes in arbitrary pieces: byte 0 picks the piece sizes. Every
// reply ends in "\r\n", a request's reply does not depend on how its bytes
// were cut, and nothing stays pending after a flush.

#include "zor_terminal_simulator.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const int step = 1 + data[0] % 31;
    const QByteArray input(reinterpret_cast<const char*>(data) + 1, int(size) - 1);
    ZOR_TerminalSimulator pieces;
    QByteArray replies;
    for (int at = 0; at < input.size(); at += step)
        replies += pieces.feed(input.mid(at, step));
    replies += pieces.flush();
    if (pieces.hasPending() || (!replies.isEmpty() && !replies.endsWith("\r\n")))
        __builtin_trap();
    ZOR_TerminalSimulator whole;
    QByteArray once = whole.feed(input);
    once += whole.flush();
    if (once != replies)
        __builtin_trap();
    ZOR_TerminalSimulator direct;
    const QByteArray reply = direct.reply(input);
    if (!reply.isEmpty() && !reply.endsWith("\r\n"))
        __builtin_trap();
    return 0;
}
