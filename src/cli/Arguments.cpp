#include "cli/Arguments.h"

#include <ostream>

namespace cintal::cli {

namespace {

const OptionSpec* Find(const CommandSpec& spec, const std::string& name) {
    for (const OptionSpec& o : spec.options)
        if (name == o.name) return &o;
    return nullptr;
}

} // namespace

Arguments::Outcome Arguments::Parse(const std::vector<std::string>& args, const CommandSpec& spec,
                                    std::ostream& out, std::ostream& err) {
    words.clear();
    values.clear();
    auto wrong = [&](const std::string& why) {
        err << "cintal-cli: " << why << "\n" << spec.usage;
        return Outcome::Wrong;
    };
    bool optionsEnd = false;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (optionsEnd || a.size() < 2 || a[0] != '-') {
            words.push_back(a);
            continue;
        }
        if (a == "--") {
            optionsEnd = true;
            continue;
        }
        if (a == "--help" || a == "-h") {
            out << spec.usage;
            return Outcome::Help;
        }
        const std::size_t eq = a.find('=');
        const std::string name = a.substr(0, eq);
        const OptionSpec* option = a.compare(0, 2, "--") == 0 ? Find(spec, name) : nullptr;
        if (!option) return wrong("opción desconocida " + a);
        std::string value;
        if (!option->takesValue) {
            if (eq != std::string::npos) return wrong("la opción " + name + " no lleva valor");
        } else if (eq != std::string::npos) {
            value = a.substr(eq + 1);
        } else if (i + 1 >= args.size() || args[i + 1].compare(0, 2, "--") == 0) {
            return wrong("falta el valor de " + name);
        } else {
            value = args[++i];
        }
        if (option->takesValue && value.compare(0, 2, "--") == 0)
            return wrong("falta el valor de " + name);
        auto& given = values[name];
        if (!given.empty() && !option->repeats)
            return wrong("la opción " + name + " se ha dado más de una vez");
        given.push_back(value);
    }
    if (words.size() < spec.leastWords || words.size() > spec.mostWords) {
        if (words.size() > spec.mostWords)
            return wrong("argumento inesperado «" + words[spec.mostWords] + "»");
        err << spec.usage;
        return Outcome::Wrong;
    }
    return Outcome::Ok;
}

std::string Arguments::Value(const std::string& option, const std::string& fallback) const {
    const auto it = values.find(option);
    return it == values.end() || it->second.empty() ? fallback : it->second.back();
}

const std::vector<std::string>& Arguments::Values(const std::string& option) const {
    static const std::vector<std::string> none;
    const auto it = values.find(option);
    return it == values.end() ? none : it->second;
}

int Stop(Arguments::Outcome outcome) {
    switch (outcome) {
    case Arguments::Outcome::Ok:
        return -1;
    case Arguments::Outcome::Help:
        return 0;
    case Arguments::Outcome::Wrong:
        return 2;
    }
    return 2;
}

long long IdOf(const std::string& text) {
    if (text.empty() || text.size() > 18) return 0;
    long long n = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return 0;
        n = n * 10 + (c - '0');
    }
    return n;
}

} // namespace cintal::cli
