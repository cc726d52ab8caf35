#pragma once

#include <QString>

namespace platform {

// Where the program reads its resources (template.mdb, the intro picture, help/) and where the
// files a user makes go (the demo, the PDFs of the Print list).
struct ProgramLayout {
    QString programFolder;
    QString dataFolder;
    bool installed = false;  // resources in a shared read-only folder, user files in their home
};

// MIXORAMA_HOME, or an executable's folder that holds template.mdb, is a program folder with the
// user's files in its data/ (the build folder). Otherwise, when ../share/mixorama beside the
// executable holds the template, the program is installed: its resources are there and the
// user's files go to userDataHome/mixorama.
ProgramLayout layoutFor(const QString& home, const QString& executableFolder,
                        const QString& userDataHome);
ProgramLayout programLayout();  // layoutFor this process's environment

QString programFolder();
QString dataFolder();  // created when missing

}  // namespace platform
