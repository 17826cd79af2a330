// What libFuzzer calls before the first input.
#include "start.h"

#include <fcntl.h>
#include <jansson.h>
#include <unistd.h>

#include "runner/allocations.h"

std::FILE* console = stderr;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    count_allocations();
    json_object_seed(1);  // so that a run is the same every time
    console = fdopen(dup(STDERR_FILENO), "w");
    // Some conversions write to standard output.
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
    return 0;
}
