// losses.h: what does not come back, as data: losses.json names each loss with its reason.
#pragma once

#include <vector>

#include "rows.h"
#include "word_places.h"

// The losses of documents like an example on their way to the other layout and back.
class Losses {
public:
    Losses(Side side, const std::vector<Row>& rows, json_t* example);

    // What comes back of that document, whose words stand there. Rows count how often they have changed something.
    Tree apply_to(json_t* document, const WordPlaces& words) const;

private:
    std::vector<const Row*> rows_;
};
