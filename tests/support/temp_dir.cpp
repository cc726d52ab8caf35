#include "support/temp_dir.h"
