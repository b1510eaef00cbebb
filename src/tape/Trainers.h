#pragma once

#include "tape/Poke.h"

#include <memory>
#include <string>
#include <vector>

namespace cintal {

// An ordered collection of pokes, found by position (from 1) or by key.
class Trainers {
public:
    using PokeRef = std::shared_ptr<Poke>;

    PokeRef Add(std::uint8_t OriginalValue, std::uint8_t Value, double Address, std::uint8_t Bank,
                double IdPok, const std::string& sKey = {});
    PokeRef Item(double position) const;
    PokeRef Item(const std::string& key) const;
    std::int64_t Count() const { return static_cast<std::int64_t>(entries.size()); }
    void Remove(double position);
    void Remove(const std::string& key);

    auto begin() const { return entries.begin(); }
    auto end() const { return entries.end(); }

private:
    struct Entry {
        std::string key;
        PokeRef poke;
    };
    std::vector<Entry> entries;
};

} // namespace cintal
