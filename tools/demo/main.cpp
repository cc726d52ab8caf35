// make-demo COMPILATIONS.mdb ALBUMS.mdb: the demo databases that ./run.sh starts Mixorama on.
// make-demo --compilations N OUT.mdb: a compilation database of N compilations, for benchmarks.
#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

#include "demo/demo_collection.h"
#include "engine/jet_error.h"

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    QTextStream err(stderr);
    try {
        if (args.size() == 3 && args[0] == QLatin1String("--compilations")) {
            demo::writeCompilations(args[2], args[1].toInt(), 7);
        } else if (args.size() == 2) {
            demo::writeDemo(args[0], args[1]);
        } else {
            err << "usage: make-demo COMPILATIONS.mdb ALBUMS.mdb\n"
                   "       make-demo --compilations N OUT.mdb\n";
            return 2;
        }
    } catch (const engine::JetError& error) {
        err << "Error " << error.number() << ": " << error.description() << Qt::endl;
        return 1;
    } catch (const std::exception& error) {
        err << error.what() << Qt::endl;
        return 1;
    }
    return 0;
}
