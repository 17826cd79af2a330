// members.h: the members of an object as a range.
#pragma once

#include <jansson.h>

namespace kcnvrt {

// In the object's own order; none of anything else. Names are borrowed as `Name{text, length}`.
template <class Name>
class MembersOf {
public:
    explicit MembersOf(json_t* object) : object_{object} {}

    struct Member {
        Name name;
        json_t* value;
    };

    class Iterator {
    public:
        Iterator(json_t* object, void* at) : object_{object}, at_{at} {}
        Member operator*() const {
            return {{json_object_iter_key(at_), json_object_iter_key_len(at_)}, json_object_iter_value(at_)};
        }
        Iterator& operator++() {
            at_ = json_object_iter_next(object_, at_);
            return *this;
        }
        bool operator!=(const Iterator& other) const { return at_ != other.at_; }

    private:
        json_t* object_;
        void* at_;
    };

    Iterator begin() const { return {object_, json_object_iter(object_)}; }
    Iterator end() const { return {object_, nullptr}; }

private:
    json_t* object_;
};

}  // namespace kcnvrt
