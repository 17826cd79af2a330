// k_conf_problem.h: why an operation of a JSON Patch cannot be carried out. A problem is its text, null where there is
// none.
#pragma once

namespace kcnvrt::conf {

using Problem = const char*;

namespace problem {

inline constexpr Problem kNoMemory = "out of memory";
inline constexpr Problem kNoPointer = "a path is not a JSON Pointer";
inline constexpr Problem kNowhere = "the path leads nowhere";
inline constexpr Problem kNothingToTake = "there is no value to take";
inline constexpr Problem kNoDocument = "the whole document cannot be removed";
inline constexpr Problem kIntoItself = "a value cannot be moved into itself";
inline constexpr Problem kTestFailed = "the test failed";
inline constexpr Problem kNoOperation = "it is no operation";
inline constexpr Problem kUnknownOperation = "the operation is unknown";
inline constexpr Problem kNoPath = "it has no path";
inline constexpr Problem kNoFrom = "it does not say where to take the value";
inline constexpr Problem kNoValue = "it has no value";
inline constexpr Problem kTooDeep = "the document would be nested more than 2048 levels deep";
inline constexpr Problem kTooLarge = "the operations copy and move too many values";

}  // namespace problem

}  // namespace kcnvrt::conf
