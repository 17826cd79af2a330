// owners.h: trees, error records and texts as tests hold them: given back when their scope ends.
#pragma once

#include <jansson.h>

#include <cstdlib>
#include <memory>

#include "k_err.h"

struct GiveBack {
    void operator()(json_t* tree) const { json_decref(tree); }
    void operator()(k_err_t* record) const { k_err_free(record); }
    void operator()(char* text) const { std::free(text); }
};

using Tree = std::unique_ptr<json_t, GiveBack>;
using Errors = std::unique_ptr<k_err_t, GiveBack>;
using Text = std::unique_ptr<char, GiveBack>;
