// make-albums OUT.mdb --albums N --seed S [--no-rating]: writes a generated album database.
#include "albumgen/albumgen.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>
#include <exception>

namespace {

int usage() {
    QTextStream(stderr) << "usage: make-albums OUT.mdb --albums N --seed S [--no-rating]\n";
    return 2;
}

bool parse(const QStringList& args, QString& out, albumgen::Options& options) {
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& a = args[i];
        bool ok = true;
        if (a == "--albums" && i + 1 < args.size())
            options.albums = args[++i].toInt(&ok);
        else if (a == "--seed" && i + 1 < args.size())
            options.seed = args[++i].toUInt(&ok);
        else if (a == "--no-rating")
            options.withRating = false;
        else if (!a.startsWith("--") && out.isEmpty())
            out = a;
        else
            return false;
        if (!ok)
            return false;
    }
    return !out.isEmpty() && options.albums >= 0;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QString out;
    albumgen::Options options;
    if (!parse(app.arguments(), out, options))
        return usage();
    try {
        albumgen::writeAlbumDatabase(out, options);
    } catch (const std::exception& e) {
        QTextStream(stderr) << "make-albums: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
