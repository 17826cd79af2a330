// k_conf_problem.h: why an operation of a JSON Patch cannot be carried out. A problem is its text, null where there is
// none.
#pragma once

namespace kcnvrt::conf {

using Problem = const char*;

namespace problem {

constexpr Problem kNoMemory = "out of memory";
constexpr Problem kNoPointer = "a path is not a JSON Pointer";
constexpr Problem kNowhere = "the path leads nowhere";
constexpr Problem kNothingToTake = "there is no value to take";
constexpr Problem kNoDocument = "the whole document cannot be removed";
constexpr Problem kIntoItself = "a value cannot be moved into itself";
constexpr Problem kTestFailed = "the test failed";
constexpr Problem kNoOperation = "it is no operation";
constexpr Problem kUnknownOperation = "the operation is unknown";
constexpr Problem kNoPath = "it has no path";
constexpr Problem kNoFrom = "it does not say where to take the value";
constexpr Problem kNoValue = "it has no value";
constexpr Problem kTooDeep = "the document would be nested more than 2048 levels deep";
constexpr Problem kTooLarge = "the operations copy and move too many values";

}  // namespace problem

}  // namespace kcnvrt::conf
