// tree_memory.h: giving back the memory of trees that were needed for a while only.
#pragma once

namespace kcnvrt::text {

// How a program whose allocator releases nothing singly takes memory back: all that came after a mark.
struct TreeMemory {
    struct Mark {
        void* part;
        char* at;
    };

    Mark (*mark)();
    void (*go_back)(Mark mark);
};

// While one lives, trees are made for a while only: it outlives every tree that is made meanwhile, and nothing that was
// there before may grow by one of them. Without such an allocator it does nothing.
class ForAWhile {
public:
    explicit ForAWhile(const TreeMemory* memory) : memory_{memory} {
        if (memory_ != nullptr) mark_ = memory_->mark();
    }
    ~ForAWhile() {
        if (memory_ != nullptr) memory_->go_back(mark_);
    }
    ForAWhile(const ForAWhile&) = delete;
    ForAWhile& operator=(const ForAWhile&) = delete;

private:
    const TreeMemory* memory_;
    TreeMemory::Mark mark_ = {};
};

}  // namespace kcnvrt::text
