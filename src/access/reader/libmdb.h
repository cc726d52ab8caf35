#pragma once

// mdbtools.h includes glib.h inside its extern "C" block, where glib's C++ parts cannot be
// compiled; including glib first leaves that inclusion empty.
#include <glib.h>
#include <iconv.h>
#include <mdbtools.h>
