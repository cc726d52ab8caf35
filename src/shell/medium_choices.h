#pragma once

#include <QString>
#include <optional>

#include "medium/medium_fit.h"

// What the user chose about a compilation's medium (the mode an MD is recorded in), kept in the
// user's settings per compilation database and compilation: the database itself holds no such
// thing, so that its structure stays as every version of the program knows it.
namespace shell {

std::optional<medium::MdMode> chosenMdMode(const QString& databasePath, qint64 compilationId);
// False when the settings could not be written.
bool storeMdMode(const QString& databasePath, qint64 compilationId, medium::MdMode mode);

}  // namespace shell
