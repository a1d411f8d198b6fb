#include "app/CardApplication.h"
#include "app/cli/CommandLine.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace {

void introduce()
{
    QCoreApplication::setApplicationName(u"cardreel"_s);
    QCoreApplication::setOrganizationName(u"Cardreel"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(CARDREEL_VERSION));
}

} // namespace

int main(int argc, char* argv[])
{
    introduce();
    if (cardreel::CommandLine::isCommand(argc, argv)) {
        const QCoreApplication application(argc, argv);
        cardreel::setupDefaults();
        return cardreel::CommandLine::run(argc, argv);
    }

    QApplication application(argc, argv);
    QGuiApplication::setApplicationDisplayName(u"Cardreel"_s);
    cardreel::setupDefaults();
    cardreel::CardApplication cardApplication(application);
    cardApplication.openAtStart(cardreel::CommandLine::paths(argc, argv));
    return QApplication::exec();
}
