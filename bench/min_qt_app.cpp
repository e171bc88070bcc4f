// The smallest Qt GUI program: made, then gone. Start-up is measured against it.
#include <QGuiApplication>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    return 0;
}
