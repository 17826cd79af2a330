// case_documents.h: the sources of the cases, each at its place in a configuration, and what fuzzing has learned.
#pragma once

#include <filesystem>
#include <vector>

#include "line.h"

namespace describe {

// Those of whole conversions, and of sections.
std::vector<Document> documents_of_cases(const std::filesystem::path& folder);

// The inputs of the fuzz targets of whole conversions that are JSON, in folders that have the names of the targets.
std::vector<Document> documents_of_corpus(const std::filesystem::path& folder);

}  // namespace describe
