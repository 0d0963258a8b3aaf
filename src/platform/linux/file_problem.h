#pragma once

#include "platform/durable_file.h"

namespace lexiquill {

/// The reason that an error number of a system call stands for.
DurableFile::Problem problemOf(int error);

} // namespace lexiquill
