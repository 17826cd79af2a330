#include "k_err.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// One message, in one allocation: the texts follow, "function\0message\0".
struct Message {
    int line;
    size_t text_at;

    char* texts() { return reinterpret_cast<char*>(this + 1); }
    const char* function() const { return reinterpret_cast<const char*>(this + 1); }
    const char* text() const { return function() + text_at; }
};

constexpr size_t kFirstCapacity = 16;

Message* new_message(const char* function, int line, size_t text_length) {
    const size_t function_size = strlen(function) + 1;
    auto* message = static_cast<Message*>(malloc(sizeof(Message) + function_size + text_length + 1));
    if (message == nullptr) return nullptr;
    message->line = line;
    message->text_at = function_size;
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

}  // namespace

struct k_err {
    Message** messages;
    size_t count;
    size_t capacity;
};

namespace {

bool has_room(k_err_t* err) {
    if (err->count < err->capacity) return true;
    if (err->capacity > SIZE_MAX / sizeof(Message*) / 2) return false;
    const size_t capacity = err->capacity == 0 ? kFirstCapacity : err->capacity * 2;
    auto* messages = static_cast<Message**>(realloc(err->messages, capacity * sizeof(Message*)));
    if (messages == nullptr) return false;
    err->messages = messages;
    err->capacity = capacity;
    return true;
}

const Message* message_at(const k_err_t* err, size_t index) {
    return index < k_err_count(err) ? err->messages[index] : nullptr;
}

}  // namespace

k_err_t* k_err_new(void) {
    return static_cast<k_err_t*>(calloc(1, sizeof(k_err_t)));
}

void k_err_free(k_err_t* err) {
    if (err == nullptr) return;
    k_err_clear(err);
    free(err->messages);
    free(err);
}

void k_err_clear(k_err_t* err) {
    if (err == nullptr) return;
    for (size_t i = 0; i < err->count; ++i) free(err->messages[i]);
    err->count = 0;
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
    if (err == nullptr || format == nullptr || !has_room(err)) return 0;
    Message* message = print_message(function == nullptr ? "" : function, line, format, arguments);
    if (message != nullptr) err->messages[err->count++] = message;
    return 0;
}

size_t k_err_count(const k_err_t* err) {
    return err == nullptr ? 0 : err->count;
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
