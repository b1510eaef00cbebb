#pragma once

namespace cintal {

// Puts a stand-in in a slot the program reads through (the prompt, the file
// operations) for the lifetime of a scope, and then the previous one back.
template <class T> class StandInScope {
public:
    StandInScope(T*& slot, T& standIn) : slot(slot), previous(slot) { slot = &standIn; }
    ~StandInScope() { slot = previous; }
    StandInScope(const StandInScope&) = delete;
    StandInScope& operator=(const StandInScope&) = delete;

private:
    T*& slot;
    T* previous;
};

} // namespace cintal
