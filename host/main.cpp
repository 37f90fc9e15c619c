#include <QApplication>
#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    std::fprintf(stderr, "zor-host: not built yet\n");
    return 1;
}
