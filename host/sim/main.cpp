// zor-sim: the simulated terminal on a pseudo-terminal, so that a host can
// reach it through a real serial port driver.
//
//   zor-sim            opens a new pseudo-terminal and prints its path
//   zor-sim DEVICE     serves an existing tty (e.g. one end of a socat pair)
//   --chunk BYTES      writes each reply in pieces of this many bytes ...
//   --chunk-delay MS   ... with this pause between them (default 20 ms),
//                      the way a slow line or a USB adapter delivers it
//   zor-sim --archive N [--version V] [--mask M | --mask-hex H] -o FILE
//                      writes a simulated telemetry archive instead
//   zor-sim --help     lists all of these
//
// Runs until killed, or until DEVICE goes away.

#include "zor_sim_archive.h"
#include "zor_terminal_simulator.h"

#include <QByteArray>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

volatile sig_atomic_t bStop = 0;

void makeRaw(int fd)
{
    termios tio{};
    if (tcgetattr(fd, &tio) == 0) {
        cfmakeraw(&tio);
        tcsetattr(fd, TCSANOW, &tio);
    }
}

int nChunkBytes = 0;
int nChunkDelayMs = 20;

bool writeRaw(int fd, const QByteArray& bytes)
{
    for (int nDone = 0; nDone < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + nDone, size_t(bytes.size() - nDone));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        nDone += int(n);
    }
    return true;
}

bool writeAll(int fd, const QByteArray& bytes)
{
    if (nChunkBytes <= 0)
        return writeRaw(fd, bytes);
    for (int nDone = 0; nDone < bytes.size(); nDone += nChunkBytes) {
        if (nDone > 0) {
            tcdrain(fd);
            usleep(useconds_t(nChunkDelayMs) * 1000);
        }
        if (!writeRaw(fd, bytes.mid(nDone, nChunkBytes)))
            return false;
    }
    return true;
}

// A whole non-negative number, or -1.
int number(const char* text)
{
    char* end = nullptr;
    const long n = std::strtol(text, &end, 10);
    return *text && !*end && n >= 0 && n <= 1000000 ? int(n) : -1;
}

// Opens a new pseudo-terminal; returns the master and keeps a slave open
// so that the master does not report a hang-up between two clients.
int openPty(int& slave)
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return -1;
    const char* path = ptsname(master);
    slave = path ? ::open(path, O_RDWR | O_NOCTTY) : -1;
    if (slave < 0)
        return -1;
    makeRaw(slave);
    std::printf("%s\n", path);
    std::fflush(stdout);
    return master;
}

const char kUsage[] = "usage: zor-sim [--chunk BYTES] [--chunk-delay MS] [DEVICE]\n"
                      "       zor-sim --archive N [--version 1|2|3] [--mask MASK | --mask-hex HEX64] -o FILE\n"
                      "\n"
                      "The simulated terminal on a pseudo-terminal (its path is printed), or on DEVICE.\n"
                      "  DEVICE               serve this tty (e.g. one end of a socat pair) instead\n"
                      "  --chunk BYTES        write each reply in pieces of this many bytes\n"
                      "  --chunk-delay MS     pause between the pieces (default 20)\n"
                      "\n"
                      "A simulated telemetry archive instead:\n"
                      "  --archive N          write N records of a simulated vehicle\n"
                      "  --version 1|2|3      protocol version of the records (default 3)\n"
                      "  --mask MASK          field set as \"1\"/\"0\" characters (default: every field)\n"
                      "  --mask-hex HEX64     field set as its 32 bytes in hex\n"
                      "  -o, --out FILE       the archive file\n"
                      "\n"
                      "  -h, --help           this text\n";

} // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--help") || !std::strcmp(argv[i], "-h")) {
            std::fputs(kUsage, stdout);
            return 0;
        }
    }
    for (int i = 1; i < argc; ++i)
        if (!std::strcmp(argv[i], "--archive"))
            return zorSimArchiveMain(argc, argv);
    const char* device = nullptr;
    for (int i = 1; i < argc; ++i) {
        const bool bChunk = !std::strcmp(argv[i], "--chunk");
        const bool bDelay = !std::strcmp(argv[i], "--chunk-delay");
        int n = -1;
        if ((bChunk || bDelay) && i + 1 < argc && (n = number(argv[++i])) >= 0) {
            (bChunk ? nChunkBytes : nChunkDelayMs) = n;
        } else if (argv[i][0] != '-' && !device && !bChunk && !bDelay) {
            device = argv[i];
        } else {
            std::fputs(kUsage, stderr);
            return 2;
        }
    }
    std::signal(SIGINT, [](int) { bStop = 1; });
    std::signal(SIGTERM, [](int) { bStop = 1; });
    std::signal(SIGPIPE, SIG_IGN);

    int slave = -1;
    const int fd = device ? ::open(device, O_RDWR | O_NOCTTY) : openPty(slave);
    if (fd < 0) {
        std::fprintf(
            stderr, "zor-sim: cannot open %s: %s\n", device ? device : "a pseudo-terminal", std::strerror(errno));
        return 1;
    }
    makeRaw(fd);

    ZOR_TerminalSimulator simulator;
    char buf[4096];
    while (!bStop) {
        pollfd pfd{fd, POLLIN, 0};
        const int nReady = poll(&pfd, 1, simulator.hasPending() ? ZOR_TerminalSimulator::nIdleFlushMs : 200);
        if (nReady < 0 && errno != EINTR)
            break;
        if (nReady == 0) {
            if (simulator.hasPending() && !writeAll(fd, simulator.flush()))
                break;
            continue;
        }
        if (nReady < 0 || !(pfd.revents & (POLLIN | POLLHUP | POLLERR)))
            continue;
        const ssize_t n = ::read(fd, buf, sizeof buf);
        if (n <= 0) {
            if (n < 0 && (errno == EINTR || errno == EAGAIN))
                continue;
            break; // the other end is gone
        }
        if (!writeAll(fd, simulator.feed(QByteArray(buf, int(n)))))
            break;
    }
    ::close(fd);
    if (slave >= 0)
        ::close(slave);
    return 0;
}
