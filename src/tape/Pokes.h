#pragma once

#include "tape/Poke.h"

#include <memory>
#include <string>

namespace cintal {

// One trainer. Model only; Add keeps nothing.
class Pokes {
public:
    std::shared_ptr<cintal::Poke>& Poke() {
        if (!poke) poke = std::make_shared<cintal::Poke>();
        return poke;
    }
    void SetPoke(std::shared_ptr<cintal::Poke> p) { poke = std::move(p); }
    void Add(std::uint8_t, std::uint8_t, double, std::uint8_t, double, const std::string&) {}

    std::string Description;

private:
    std::shared_ptr<cintal::Poke> poke;
};

} // namespace cintal
