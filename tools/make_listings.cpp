// Writes the demo listing pages: "legend.html" and the five folders of the
// archive's listings, a page per letter, as a collector would have saved
// them. A few hundred invented entries in every mark-up the import reads,
// some of them titles of the demo collection, accents in Windows-1252, double
// quotes, "(speech)", a publisher left blank; and two pages that didn't save
// well: a line widened by an entity and a page without its table. The same
// pages on every run.
//
//   cintal-demo-listings FOLDER

#include "ListingPages.h"
#include "tape/Cp1252.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>

using namespace cintal;
using listing::Entry;
using listing::Style;

namespace fs = std::filesystem;

namespace {

const char* kFirst[] = {"El Castillo", "La Cripta",    "Operación", "Misión",     "El Secreto",
                        "La Leyenda",  "Comando",      "Galaxia",   "Ciudad",     "El Valle",
                        "Star",        "Dragon",       "Cosmic",    "Jungle",     "Turbo",
                        "Mega",        "Dr. Wilson's", "Jack's",    "L'Aventure", "Capitán"};
const char* kSecond[] = {"Perdida", "del Dragón", "Tormenta", "Sombría", "de Cristal",
                         "Maldita", "Núñez",      "Force",    "Quest",   "Runner",
                         "Patrol",  "Escape",     "Revenge",  "Island",  "Fever",
                         "Ñu",      "Año Cero",   "2",        "10",      "de Hierro"};
const char* kTypes[] = {"Arcade",  "Aventur", "Estrate", "Deporte",
                        "Utilida", "Puzzle",  "Simulad", "Educati"};

// A small deterministic sequence, so that every run writes the same pages.
unsigned next = 4242;
unsigned Rand(unsigned n) {
    next = next * 1103515245u + 12345u;
    return (next >> 16) % n;
}

std::string Cp(const std::string& utf8) {
    return Utf8ToCp1252(utf8);
}

Entry Make(const std::string& title, const std::string& year, const std::string& publisher,
           const std::string& type, Style style, bool speech = false) {
    static int id = 0;
    Entry e;
    e.title = Cp(title);
    e.year = year;
    e.publisher = Cp(publisher);
    e.type = Cp(type);
    e.style = style;
    e.speech = speech;
    e.memory = Rand(4) ? "48K" : "128K";
    e.lang = Rand(3) ? "Spa" : "Eng";
    e.id = ++id;
    return e;
}

Style AnyStyle() {
    const unsigned r = Rand(100);
    if (r < 55) return Style::Italic;
    if (r < 72) return Style::Plain;
    if (r < 84) return Style::Bold;
    if (r < 93) return Style::Blue;
    return Style::Red;
}

bool Write(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (out) return true;
    std::fprintf(stderr, "No se puede escribir %s\n", path.string().c_str());
    return false;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Uso: cintal-demo-listings CARPETA\n");
        return 2;
    }
    const fs::path root = argv[1];
    fs::remove_all(root);

    // Entries by folder, then by page.
    std::map<std::string, std::map<std::string, std::vector<Entry>>> pages;
    auto add = [&](const std::string& folder, const Entry& e) {
        pages[folder][listing::PageOf(e.title)].push_back(e);
    };

    // Games that the demo collection holds: the import finds them there.
    add("games", Make("Castillo Sombrío", "1986", "Zafiro Software", "Arcade", Style::Italic));
    add("games", Make("Dragón de Fuego", "1986", "Bytes del Sur", "Arcade", Style::Italic));
    add("games", Make("Ninja Nocturno", "1989", "Lince Soft", "Arcade", Style::Plain));
    add("utils", Make("Editor de Textos", "1986", "Microbyte Ediciones", "Utility", Style::Italic));
    add("type-ins", Make("Curso de BASIC", "1985", "", "Educati", Style::Plain));
    // Names that trip a store up, and the other oddities of a listing.
    add("games", Make("The \"Last\" Ninja", "1987", "System 3", "Arcade", Style::Italic));
    add("games", Make("Jack's \"Big\" Day Out", "1985", "Ocean", "Arcade", Style::Bold));
    add("games", Make("abadía del crimen, La", "1988", "Ópera Soft", "Aventur", Style::Italic));
    add("games", Make("Título sin año ni empresa", "", "", "", Style::Plain));
    add("games", Make("Loro Parlante", "1985", "Dinamic", "Arcade", Style::Italic, true));
    add("games", Make("Voz de la Galaxia", "1986", "Topo Soft", "Arcade", Style::Blue, true));
    add("games", Make("3D Laberinto", "1983", "Hewson", "Puzzle", Style::Red));
    add("type-ins", Make("Ábaco Mágico", "1984", "Ediciones Año", "Educati", Style::Italic));
    add("textadv", Make("La Aventura Original", "1989", "Dinamic", "Aventur", Style::Italic));
    add("textadv", Make("Cozumel", "1990", "Aventuras AD", "Aventur", Style::Italic, true));
    add("tr-games", Make("Torre de Marfil 2", "1994", "Zafiro Software", "Estrate", Style::Bold));
    // The same title on two pages: the first one read is kept.
    add("tr-games", Make("Comando Nocturno", "1993", "Lince Soft", "Arcade", Style::Italic));
    add("games", Make("Comando Nocturno", "1993", "Lince Soft", "Arcade", Style::Blue));
    add("games", Make("Xyber", "1989", "Gremlin", "Arcade", Style::Plain));

    static const char* folders[] = {"tr-games", "type-ins", "utils", "games",  "games",
                                    "games",    "games",    "games", "textadv"};
    for (int i = 0; i < 320; ++i) {
        const std::string name = std::string(kFirst[Rand(std::size(kFirst))]) + " " +
                                 kSecond[Rand(std::size(kSecond))] +
                                 (Rand(4) == 0 ? " " + std::to_string(i % 7 + 2) : "");
        const std::string folder = folders[Rand(std::size(folders))];
        const std::string year = Rand(10) ? std::to_string(1982 + Rand(11)) : "";
        const std::string publisher =
            Rand(12) ? listing::kDemoPublishers[Rand(std::size(listing::kDemoPublishers))] : "";
        std::string type = kTypes[Rand(std::size(kTypes))];
        if (folder == "utils") type = "Utilida";
        if (folder == "textadv") type = "Aventur";
        add(folder, Make(name, year, publisher, type, AnyStyle(), Rand(40) == 0));
    }

    if (!Write(root / "legend.html", listing::Legend())) return 1;
    int written = 0, entries = 0;
    for (auto& [folder, letters] : pages) {
        for (auto& [letter, list] : letters) {
            std::stable_sort(list.begin(), list.end(),
                             [](const Entry& a, const Entry& b) { return a.title < b.title; });
            entries += static_cast<int>(list.size());
            std::string page = listing::Page(folder + ": " + letter, list);
            // A page saved from a version of the site that wrote an entity
            // into a title: its line is wider than the table by the entity's
            // letters.
            if (folder == "games" && letter == "x") {
                std::string wide = listing::Line(
                    Make("Xenon & Co", "1988", "Melbourne House", "Arcade", Style::Italic));
                wide.replace(wide.find(" & "), 3, " &amp; ");
                page.insert(page.find(listing::Line(list.front())), wide);
                ++entries;
            }
            if (!Write(root / folder / (letter + ".html"), page)) return 1;
            ++written;
        }
    }
    // A page whose download failed: the site's error page stands in its place.
    if (!Write(root / "textadv" / "q.html",
               "<HTML>\n<HEAD><TITLE>Error</TITLE></HEAD>\n<BODY>\n<H1>Not Found</H1>\n</BODY>\n"
               "</HTML>\n"))
        return 1;
    ++written;
    std::printf("Listados de ejemplo en %s: %d páginas, %d entradas\n", root.string().c_str(),
                written, entries);
    return 0;
}
