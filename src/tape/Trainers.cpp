#include "tape/Trainers.h"

#include <algorithm>

namespace cintal {

Trainers::PokeRef Trainers::Add(std::uint8_t OriginalValue, std::uint8_t Value, double Address,
                                std::uint8_t Bank, double IdPok, const std::string& sKey) {
    auto p = std::make_shared<Poke>();
    p->OriginalValue = OriginalValue;
    p->Value = Value;
    p->Address = Address;
    p->Bank = Bank;
    p->IdPok = IdPok;
    entries.push_back({sKey, p});
    return p;
}

Trainers::PokeRef Trainers::Item(double position) const {
    if (position < 1 || position > static_cast<double>(entries.size())) return nullptr;
    return entries[static_cast<std::size_t>(position) - 1].poke;
}

Trainers::PokeRef Trainers::Item(const std::string& key) const {
    if (key.empty()) return nullptr;
    auto it =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.key == key; });
    return it == entries.end() ? nullptr : it->poke;
}

void Trainers::Remove(double position) {
    if (position < 1 || position > static_cast<double>(entries.size())) return;
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(position) - 1);
}

void Trainers::Remove(const std::string& key) {
    if (key.empty()) return;
    auto it =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.key == key; });
    if (it != entries.end()) entries.erase(it);
}

} // namespace cintal
