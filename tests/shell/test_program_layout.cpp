// Where the program reads its resources and writes the user's files: the build folder (or
// MIXORAMA_HOME) holds both; an installed program reads share/mixorama and writes the user's.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "platform/program_folder.h"
#include "support/temp_dir.h"

namespace {

TEST(ProgramLayout, TheTemplateBesideTheExecutableOrInShareDecidesTheLayout) {
    testsupport::TempDir dir;
    const QString root = dir.path();
    for (const char* folder : {"build/bin", "usr/bin", "usr/share/mixorama", "bare/bin"})
        QDir(root).mkpath(QString::fromLatin1(folder));
    for (const char* file : {"build/bin/template.mdb", "usr/share/mixorama/template.mdb"})
        QFile(dir.file(QString::fromLatin1(file))).open(QIODevice::WriteOnly);
    const QString user = dir.file("home/.local/share");
    struct Case {
        QString home, executableFolder, programFolder, dataFolder;
        bool installed;
    } cases[] = {
        {{}, root + "/build/bin", root + "/build/bin", root + "/build/bin/data", false},
        {{}, root + "/usr/bin", root + "/usr/share/mixorama", user + "/mixorama", true},
        {root + "/build/bin/", root + "/usr/bin", root + "/build/bin", root + "/build/bin/data",
         false},
        {{}, root + "/bare/bin", root + "/bare/bin", root + "/bare/bin/data", false},
    };
    for (const Case& c : cases) {
        const platform::ProgramLayout layout =
            platform::layoutFor(c.home, c.executableFolder, user);
        EXPECT_EQ(layout.programFolder, c.programFolder) << c.executableFolder.toStdString();
        EXPECT_EQ(layout.dataFolder, c.dataFolder) << c.executableFolder.toStdString();
        EXPECT_EQ(layout.installed, c.installed) << c.executableFolder.toStdString();
    }
}

}  // namespace
