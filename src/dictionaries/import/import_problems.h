#pragma once

#include "dictionaries/import/import_result.h"
#include "platform/durable_file.h"

namespace lexiquill {

/// The problem of an import whose files cannot be written.
inline ImportProblem importProblem(DurableFile::Problem problem) {
    switch (problem) {
    case DurableFile::Problem::None:
        return ImportProblem::None;
    case DurableFile::Problem::NoSpace:
        return ImportProblem::NoSpace;
    default:
        return ImportProblem::NoPermission;
    }
}

} // namespace lexiquill
