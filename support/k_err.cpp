// The messages of a record, and what it keeps besides.
#include "k_err.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <new>

#include "k_err_record.h"

using namespace kcnvrt;

namespace {

// All failures since the process started. Nothing is ordered by it: a record only asks whether it has changed.
std::atomic<uint32_t> failures{0};

Message* new_message(const char* function, int line, size_t text_length) {
    const size_t function_size = strlen(function) + 1;
    void* memory = noted(malloc(sizeof(Message) + function_size + text_length + 1));
    if (memory == nullptr) return nullptr;
    auto* message = new (memory) Message{line, true, function_size, kNone, nullptr};
    memcpy(message->texts(), function, function_size);
    return message;
}

// Null when memory runs out or the arguments cannot be printed.
[[gnu::format(printf, 3, 0)]] Message* print_message(const char* function, int line, const char* format,
                                                     va_list arguments) {
    char brief[256];
    va_list again;
    va_copy(again, arguments);
    const int length = vsnprintf(brief, sizeof brief, format, arguments);
    Message* message = length < 0 ? nullptr : new_message(function, line, static_cast<size_t>(length));
    if (message != nullptr) {
        const size_t size = static_cast<size_t>(length) + 1;
        char* text = message->texts() + message->text_at;
        if (size <= sizeof brief) {
            memcpy(text, brief, size);
        } else {
            vsnprintf(text, size, format, again);
        }
    }
    va_end(again);
    return message;
}

const Message* message_at(const k_err_t* err, size_t index) {
    return index < k_err_count(err) ? err->messages[index] : nullptr;
}

void free_message(Message* message) {
    free(message->pointer);
    free(message);
}

}  // namespace

uint32_t kcnvrt::failed_allocations() {
    return failures.load(std::memory_order_relaxed);
}

void k_err_no_memory(void) {
    failures.fetch_add(1, std::memory_order_relaxed);
}

k_err_t* k_err_new(void) {
    void* memory = noted(malloc(sizeof(k_err_t)));
    return memory == nullptr ? nullptr : new (memory) k_err_t;
}

void k_err_free(k_err_t* err) {
    if (err == nullptr) return;
    k_err_clear(err);
    err->~k_err();
    free(err);
}

void k_err_clear(k_err_t* err) {
    if (err == nullptr) return;
    for (size_t i = 0; i < err->messages.size(); ++i) free_message(err->messages[i]);
    for (size_t i = 0; i < err->printed.size(); ++i) free(err->printed[i]);
    err->messages.cut(0);
    err->places.cut(0);
    err->nodes.cut(0);
    err->names.cut(0);
    err->printed.cut(0);
    err->settled = 0;
    err->failed_before = failed_allocations();
}

int k_err_set(k_err_t* err, const char* function, int line, const char* format, ...) {
    if (err == nullptr) return 0;
    va_list arguments;
    va_start(arguments, format);
    k_err_vset(err, function, line, format, arguments);
    va_end(arguments);
    return 0;
}

int k_err_vset(k_err_t* err, const char* function, int line, const char* format, va_list arguments) {
    if (err == nullptr || format == nullptr || !err->messages.has_room(1)) return 0;
    Message* message = print_message(function == nullptr ? "" : function, line, format, arguments);
    if (message != nullptr) err->messages.add(message);
    return 0;
}

size_t k_err_count(const k_err_t* err) {
    return err == nullptr ? 0 : err->messages.size();
}

const char* k_err_function(const k_err_t* err, size_t index) {
    const Message* message = message_at(err, index);
    return message == nullptr ? nullptr : message->function();
}

int k_err_line(const k_err_t* err, size_t index) {
    const Message* message = message_at(err, index);
    return message == nullptr ? 0 : message->line;
}

const char* k_err_message(const k_err_t* err, size_t index) {
    const Message* message = message_at(err, index);
    return message == nullptr ? nullptr : message->text();
}

int k_err_is_counted(const k_err_t* err, size_t index) {
    const Message* message = message_at(err, index);
    return message != nullptr && message->is_counted;
}

void k_err_leave_out(k_err_t* err, size_t first) {
    for (size_t i = first; i < k_err_count(err); ++i) err->messages[i]->is_counted = false;
}

int k_err_is_complete(const k_err_t* err) {
    return err != nullptr && err->failed_before == failed_allocations();
}

void k_err_keep_printed(k_err_t* err) {
    if (err != nullptr) err->keeps_printed = true;
}

void k_err_print(k_err_t* err, const char* line) {
    if (line == nullptr) return;
    if (err == nullptr || !err->keeps_printed) {
        std::puts(line);
        return;
    }
    if (!err->printed.has_room(1)) return;
    if (char* kept = noted(strdup(line))) err->printed.add(kept);
}

size_t k_err_printed_count(const k_err_t* err) {
    return err == nullptr ? 0 : err->printed.size();
}

const char* k_err_printed(const k_err_t* err, size_t index) {
    return index < k_err_printed_count(err) ? err->printed[index] : nullptr;
}
