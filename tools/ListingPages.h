#pragma once
// Listing pages of the software archive, written as the archive saves them:
// Windows-1252 text with line feeds, a table between "<PRE>" and "</PRE>"
// whose first 120 characters are its heading, then one line per entry with
// fixed columns, a link around the title and the mark-up that tells the
// entry's availability. The demo listings and the benchmark build their
// pages from these.

#include <string>
#include <vector>

namespace cintal::listing {

// How the archive marks an entry: bold when no tape exists, blue when the
// program is missing, red when its distribution is denied.
enum class Style { Plain, Italic, Bold, Blue, Red };

// One entry; every text in Windows-1252. Texts wider than their column are
// cut, and no text may hold mark-up or an entity, which would count in the
// columns with its full length.
struct Entry {
    std::string title;           // 43 columns
    std::string year;            // 4
    std::string publisher;       // 36
    std::string lang = "Eng";    // 3
    std::string memory = "48K";  // 6
    std::string type = "Arcade"; // 7
    Style style = Style::Plain;
    bool speech = false;
    int id = 0; // the number in the link
};

inline std::string Column(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

// A line of the table, its line feed included: 112 visible characters.
inline std::string Line(const Entry& e) {
    std::string title = e.title.substr(0, 43);
    std::string id = std::to_string(e.id);
    id.insert(0, id.size() < 7 ? 7 - id.size() : 0, '0');
    std::string text = "<A HREF=\"../infoseek/" + id + ".html\">" + title + "</A>" +
                       std::string(43 - title.size(), ' ');
    text += e.speech ? " (speech)" : std::string(9, ' ');
    text += Column(e.year, 4) + ' ' + Column(e.publisher, 36) + ' ' + Column(e.lang, 3) + ' ' +
            Column(e.memory, 6) + ' ' + Column(e.type, 7);
    switch (e.style) {
    case Style::Plain:
        break;
    case Style::Italic:
        text = "<I>" + text + "</I>";
        break;
    case Style::Bold:
        text = "<B>" + text + "</B>";
        break;
    case Style::Blue:
        text = "<FONT COLOR=\"BLUE\">" + text + "</FONT>";
        break;
    case Style::Red:
        text = "<FONT COLOR=\"RED\">" + text + "</FONT>";
        break;
    }
    return text + '\n';
}

// The table's heading: one line of 118 characters and its line feed, which
// are 120 once the line feed is a carriage return and a line feed.
inline std::string Heading() {
    std::string h = Column("Title", 52) + Column("Year", 5) + Column("Publisher", 37) +
                    Column("Lng", 4) + Column("Memory", 7) + Column("Type", 7);
    return Column(h, 118) + '\n';
}

inline std::string Page(const std::string& caption, const std::vector<Entry>& entries) {
    std::string page = "<HTML>\n<HEAD><TITLE>" + caption + "</TITLE></HEAD>\n<BODY>\n<H1>" +
                       caption + "</H1>\n<P><A HREF=\"../legend.html\">Legend</A></P>\n<PRE>\n" +
                       Heading();
    for (const Entry& e : entries)
        page += Line(e);
    return page + "</PRE>\n</BODY>\n</HTML>\n";
}

inline std::string Legend() {
    return "<HTML>\n<HEAD><TITLE>Legend</TITLE></HEAD>\n<BODY>\n<H1>Legend</H1>\n<PRE>\n"
           "<B>Bold</B>                      no tape exists\n"
           "<I>Italic</I>                    tape available\n"
           "<FONT COLOR=\"BLUE\">Blue</FONT>  missing in action\n"
           "<FONT COLOR=\"RED\">Red</FONT>    distribution denied\n"
           "(speech)                         the program speaks\n"
           "</PRE>\n</BODY>\n</HTML>\n";
}

// The page an entry belongs on: its title's first letter, or "1" for any
// other first character. Letters with an accent go with their base letter.
inline std::string PageOf(const std::string& cp1252Title) {
    if (cp1252Title.empty()) return "1";
    unsigned char c = static_cast<unsigned char>(cp1252Title[0]);
    if (c >= 'A' && c <= 'Z') c = static_cast<unsigned char>(c - 'A' + 'a');
    static const std::string accented = "\xC1\xC9\xCD\xD3\xDA\xE1\xE9\xED\xF3\xFA\xD1\xF1";
    static const std::string base = "aeiouaeiounn";
    if (const auto at = accented.find(static_cast<char>(c)); at != std::string::npos)
        c = static_cast<unsigned char>(base[at]);
    if (c >= 'a' && c <= 'z') return std::string(1, static_cast<char>(c));
    return "1";
}

// The publishers of the demo listings, in UTF-8. The demo catalogue registers
// them first, in this order, so that their numbers don't depend on which of
// them the listings happen to use.
inline constexpr const char* kDemoPublishers[] = {
    "Dinamic",         "Topo Soft",   "Ópera Soft", "Zigurat",       "Erbe",
    "Made in Spain",   "Iber Soft",   "Positive",   "System 4",      "MCM",
    "Ocean",           "Imagine",     "Gremlin",    "Hewson",        "Mastertronic",
    "Codemasters",     "Firebird",    "Bug-Byte",   "Quicksilva",    "Durell",
    "Melbourne House", "Microsphere", "Hi-Tec",     "Ediciones Año", "Software Niño",
};

// The five folders below the root, in the order they are read.
inline const std::vector<std::string>& Folders() {
    static const std::vector<std::string> f = {"tr-games", "type-ins", "utils", "games", "textadv"};
    return f;
}

} // namespace cintal::listing
