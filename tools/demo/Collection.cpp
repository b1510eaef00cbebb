#include "Collection.h"

#include "Filler.h"
#include "Output.h"
#include "ZipBytes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cintal::demo {

using namespace raw;

void Juegos(const fs::path& dir) {
    {
        Info info{.name = "Castillo Sombrío",
                  .publisher = "Zafiro Software",
                  .author = "J. Montero, L. Gil",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .price = "875 pts",
                  .loader = "ROM",
                  .origin = "Original",
                  .comments = "Edición original en casete. © 1986 Zafiro Software"};
        auto blocks = StandardLoad("CASTILLO", 25000, 30000);
        blocks.push_back(Custom(
            "POKEs", PokesData(Cp("Pokes de la revista"),
                               {{Cp("Vidas infinitas"), {{8, 31460, 0, 53}}},
                                {Cp("Energía infinita"), {{8, 28012, 0, 61}, {8, 28013, 0, 1}}},
                                {"Sin enemigos", {{8, 40112, 201, 62}}}})));
        Write(dir, "Castillo Sombrio.tzx", Assemble(1, 10, info, blocks));
        // Its screen lies beside the snapshot in Varios, not here.
        InlayFile(dir, ArtOf(info, Scene::Castle), InlayShape::Front);
    }
    {
        // A ROM-speed loader that hands over to its own turbo routine.
        Info info{.name = "El Pequeño Minero",
                  .publisher = "Lince Soft",
                  .author = "Íñigo Arrieta",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Plataformas",
                  .price = "£1.99",
                  .loader = "Cargador turbo propio",
                  .origin = "Reedición",
                  .republisher = "Budget Bytes Ltd",
                  .comments = "Reedición económica para el Reino Unido. Incluye dos niveles "
                              "nuevos."};
        Filler f("minero");
        auto blocks = StandardLoad("\x7F"
                                   "Lince 87",
                                   24000, 1200, false);
        blocks.push_back(PureTone(2168, 3223));
        blocks.push_back(Pulses({667, 735}));
        blocks.push_back(PureData(RomData(f.Code(256)), 0));
        blocks.push_back(Turbo(RomData(LoadingScreen("minero")), 0));
        blocks.push_back(Turbo(RomData(f.Code(28000))));
        Write(dir, "El Pequeno Minero.tzx", Assemble(1, 13, info, blocks));
        ScreenFile(dir, ArtOf(info, Scene::Cavern));
    }
    {
        Info info{.name = "Galactic Raiders",
                  .publisher = "Northern Star Software",
                  .author = "Paul Hadley",
                  .year = "1985",
                  .lang = "English",
                  .type = "Arcade: shoot-em-up",
                  .price = "£5.95",
                  .loader = "ROM + turbo",
                  .origin = "Original",
                  .comments = "48K and 128K versions on one tape."};
        Filler f("raiders");
        auto load = StandardLoad("Raiders", 26000, 2000, true);
        std::vector<Bytes> blocks{GroupStart("Side A")};
        blocks.insert(blocks.end(), load.begin(), load.end());
        // 128K: check the model, a jingle, the large code, then over the 48K code.
        blocks.push_back(Select({{1, "128K version"}, {8, "48K version"}}));
        blocks.push_back(StopIf48K());
        blocks.push_back(LoopStart(3));
        blocks.push_back(PureTone(620, 800));
        blocks.push_back(Pulses({300, 300, 600}));
        blocks.push_back(LoopEnd());
        blocks.push_back(Turbo(RomData(f.Code(16000))));
        blocks.push_back(Jump(2));
        blocks.push_back(Turbo(RomData(f.Code(12000))));
        blocks.push_back(GroupEnd());
        blocks.push_back(StopTape());
        Write(dir, "Galactic Raiders.tzx", Assemble(1, 20, info, blocks));
        // Side files named in capitals, as a collection copied from an old disk has them.
        Art art = ArtOf(info, Scene::Space);
        art.machine = "48K / 128K";
        ScreenFile(dir, art, "GALACTIC RAIDERS.SCR");
        InlayFile(dir, art, InlayShape::Front, "GALACTIC RAIDERS.JPG");
    }
    {
        // Named in capitals, as the older collections did.
        Info info{.name = "Abadía Negra",
                  .publisher = "Bytes del Sur",
                  .author = "M. A. Ruiz",
                  .year = "1988",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .price = "1.200 pts",
                  .origin = "Original",
                  .comments = "Cara A: juego. Cara B: tablas de puntuaciones."};
        Filler f("abadia");
        auto blocks = StandardLoad("ABADIA", 25500, 34000);
        blocks.push_back(StopTape());
        blocks.push_back(Text(Cp("Cara B")));
        blocks.push_back(Standard(RomHeader(RomType::NumberArray, "puntos", 56, 0x81, 32768)));
        blocks.push_back(Standard(RomData(f.Code(56))));
        blocks.push_back(Pause(2000));
        blocks.push_back(Standard(RomHeader(RomType::CharArray, "nombres", 83, 0xC1, 32768)));
        blocks.push_back(Standard(RomData(f.Code(83))));
        Write(dir, "ABADIA NEGRA.TZX", Assemble(1, 13, info, blocks));
        const Art art = ArtOf(info, Scene::Castle);
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Rooms, QSize(1200, 400));
    }
    {
        // Some tools append the archive block after the data.
        Info info{.name = "Torre de Marfil",
                  .publisher = "Zafiro Software",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Estrategia",
                  .origin = "Original"};
        auto blocks = StandardLoad("TORRE", 27000, 22000);
        Write(dir, "Torre de Marfil.tzx", TzxHeader(1, 13) + Join(blocks) + ArchiveOf(info));
        ScreenFile(dir, ArtOf(info, Scene::Floor));
    }
    {
        // Two archive blocks: the second corrects the year and adds a comment.
        Info first{.name = "Pirata Pata de Palo",
                   .publisher = "Bytes del Sur",
                   .year = "1986",
                   .lang = "Español",
                   .type = "Aventura de texto"};
        Bytes second = Archive({{3, "1987"}, {255, Cp("Año corregido según el inlay.")}});
        auto blocks = StandardLoad("PIRATA", 24500, 18000, false);
        Write(dir, "Pirata Pata de Palo.tzx",
              TzxHeader(1, 13) + ArchiveOf(first) + blocks[0] + blocks[1] + second + blocks[2] +
                  blocks[3]);
        Art art = ArtOf(first, Scene::Sea);
        art.blurb = "El capitán Pata de Palo ha perdido su barco, su loro y el mapa del tesoro. "
                    "Recorra la isla, hable con sus gentes y descubra quién se los llevó. "
                    "Una aventura de texto con más de cien localidades.";
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
    }
    {
        // A dump that stopped before the end of the last block.
        Info info{.name = "Ninja Nocturno",
                  .publisher = "Lince Soft",
                  .year = "1989",
                  .lang = "Español",
                  .type = "Arcade: lucha",
                  .origin = "Original",
                  .comments = "Copia incompleta: falta el final del último bloque."};
        Bytes whole = Assemble(1, 10, info, StandardLoad("NINJA", 25000, 26000));
        Write(dir, "Ninja Nocturno.tzx", whole.substr(0, whole.size() - 9000));
        ScreenFile(dir, ArtOf(info, Scene::City));
    }
    {
        // Both sides merged into one file; the levels are loaded as subroutines.
        Info info{.name = "Operación Tormenta",
                  .publisher = "Topacio Soft",
                  .author = "Equipo Topacio",
                  .year = "1988",
                  .lang = "Español",
                  .type = "Arcade: disparos",
                  .price = "995 pts",
                  .loader = "ROM",
                  .origin = "Original",
                  .comments = "Cinta de dos caras unida en un solo archivo."};
        Filler f("tormenta");
        auto blocks = StandardLoad("TORMENTA", 26000, 15000);
        blocks.push_back(MergeMarker(1, 13));
        blocks.push_back(CallSequence({2, 5}));
        blocks.push_back(Jump(6));
        blocks.push_back(Standard(RomHeader(RomType::Code, "nivel 1", 9000, 40000, 32768)));
        blocks.push_back(Standard(RomData(f.Code(9000))));
        blocks.push_back(Return());
        blocks.push_back(Standard(RomData(f.Code(9500))));
        blocks.push_back(Return());
        blocks.push_back(MergeMarker(1, 10));
        blocks.push_back(StopTape());
        Write(dir, "Operación Tormenta.tzx", Assemble(1, 13, info, blocks));
        ScreenFile(dir, ArtOf(info, Scene::Storm));
    }
    {
        // Every kind that TZX 1.20 brought: the loader and its screen as
        // generalized data with the ROM's symbols, a turbo part with symbols
        // of its own, the level set by hand, and two parts sampled as CSW.
        Info info{.name = "Mansión Misteriosa",
                  .publisher = "Topacio Soft",
                  .year = "1990",
                  .lang = "Español",
                  .type = "Videoaventura",
                  .loader = "Datos generalizados",
                  .origin = "Original"};
        Filler f("mansion");
        const Bytes program = LoaderProgram(24999, 25000, true);
        const auto size = static_cast<std::uint16_t>(program.size());
        const std::vector<Bytes> blocks{
            GeneralizedRom(RomHeader(RomType::Program, "MANSION", size, 10, size)),
            GeneralizedRom(RomData(program)),
            GeneralizedRom(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)),
            GeneralizedRom(RomData(LoadingScreen("mansion"))),
            SignalLevel(0),
            Generalized(0, {{0, {1200}}, {0, {400, 450}}}, {{0, 2000}, {1, 1}},
                        {{0, {400, 400}}, {0, {800, 800}}}, 8 * 3000, f.Code(3000)),
            Pause(1000),
            CswOf(RomData(f.Code(600)), false),
            CswOf(RomData(f.Code(900)), true),
            Pause(1000),
            Turbo(RomData(f.Code(20000)))};
        Write(dir, "Mansion Misteriosa.tzx", Assemble(1, 20, info, blocks));
        const Art art = ArtOf(info, Scene::Castle);
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Rooms, QSize(960, 480));
    }
    {
        // An early dump: format 0.5, no archive block, a text block instead.
        auto blocks = StandardLoad("RANAS", 28000, 9000, false);
        blocks.insert(blocks.begin(), Text("Ranas Saltarinas - (c) 1984 Erizo"));
        Write(dir, "Ranas Saltarinas.tzx", Assemble(0, 5, {}, blocks));
        // One screen for both files of the title: the program matches the TAP's
        // capitals to it.
        ScreenFile(dir, Art{.title = "Ranas Saltarinas",
                            .publisher = "Erizo",
                            .year = "1984",
                            .scene = Scene::Hills});

        // The same game as a TAP file, whose TZX already stands beside it.
        Filler f("RANAS");
        Bytes program = LoaderProgram(27999, 28000, false);
        Write(dir, "RANAS SALTARINAS.tap",
              TapEntry(RomHeader(RomType::Program, "RANAS",
                                 static_cast<std::uint16_t>(program.size()), 10,
                                 static_cast<std::uint16_t>(program.size()))) +
                  TapEntry(RomData(program)) +
                  TapEntry(RomHeader(RomType::Code, "codigo", 9000, 28000, 32768)) +
                  TapEntry(RomData(f.Code(9000))));
    }
    // Snapshots of games whose tapes the collection lacks. Their titles and
    // details are in the catalogue; the screen in each snapshot is the one
    // the game was showing.
    {
        const Art art{.title = "Misión: Rescate?",
                      .publisher = "Lince Soft",
                      .year = "1987",
                      .scene = Scene::City,
                      .blurb = "Tres rehenes, un helicóptero y una ciudad tomada por la banda de "
                               "los Cuervos. Tiene hasta el amanecer para sacarlos de allí. "
                               "¿Lo conseguirá? Doce pisos, cuarenta pantallas y un final que "
                               "nadie ha visto todavía."};
        Write(dir, "Mision Rescate.z80", Z80v1(Ram48(LoadingScreenOf(art).Encode(), "rescate")));
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
        MapFile(dir, art, MapKind::Rooms, QSize(1050, 450));
        CodeSheetFile(dir, art, CodeKind::Letters);
    }
    {
        const Art art{.title = "Dragón de Fuego",
                      .publisher = "Bytes del Sur",
                      .year = "1986",
                      .scene = Scene::Cavern};
        Write(dir, "Dragon de Fuego.sna", SnaOf(Ram48(LoadingScreenOf(art).Encode(), "dragon")));
        ScreenFile(dir, art);
    }
    {
        const Art art{.title = "Comando Tigre",
                      .publisher = "Topacio Soft",
                      .year = "1989",
                      .scene = Scene::Hills,
                      .blurb = "La selva esconde la base del coronel Vargas. Dos comandos, "
                               "munición para una noche y ningún camino de vuelta. Para uno o "
                               "dos jugadores, con música para el chip de sonido del 128K.",
                      .machine = "128K"};
        Write(dir, "Comando Tigre.z80",
              Z80v3(Pages128(LoadingScreenOf(art).Encode(), "tigre"), true));
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
        CodeSheetFile(dir, art, CodeKind::Colours);
    }
    {
        const Art art{.title = "Cavernas Abisales",
                      .publisher = "Erizo Soft",
                      .year = "1990",
                      .scene = Scene::Cavern};
        const Bytes screen = LoadingScreenOf(art).Encode();
        Write(dir, "Cavernas Abisales.slt", Slt(Ram48(screen, "cavernas"), screen, "cavernas"));
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Rooms, QSize(900, 450));
    }
    {
        // A name cut to eight capitals, as the disks of the time kept them.
        const Art art{.title = "Laberinto del Minotauro",
                      .publisher = "Microbyte Ediciones",
                      .year = "1984",
                      .scene = Scene::Maze};
        Write(dir, "LABERINT.SP", Sp(Ram48(LoadingScreenOf(art).Encode(), "laberinto")));
        ScreenFile(dir, art);
    }
}

void Utilidades(const fs::path& dir) {
    {
        Info info{.name = "Ensamblador ZX",
                  .publisher = "Microbyte Ediciones",
                  .author = "Carlos Peña",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Utilidad: ensamblador",
                  .price = "2.500 pts",
                  .origin = "Original",
                  .comments = "Ensamblador y monitor de código máquina.\r\nIncluye manual."};
        Bytes manual = Cp("ENSAMBLADOR ZX - MANUAL\r\r"
                          "1. Carga: LOAD \"\" y pulse ENTER.\r"
                          "2. Editor: las líneas se numeran de 10 en 10.\r"
                          "3. Ensamblar: pulse A; los errores se señalan con ?.\r"
                          "4. Grabar el código: pulse S e indique dirección y longitud.\r");
        std::vector<Bytes> blocks{
            Text(Cp("Ensamblador ZX - versión 2")),
            MessageBlock(Cp("Pare el casete tras la carga"), 5),
            Hardware({{0, 0, 0}, {0, 3, 1}, {3, 0, 0}}),
            EmulationInfo(),
        };
        auto load = StandardLoad("ENSAMB", 50000, 11000, false);
        blocks.insert(blocks.end(), load.begin(), load.end());
        blocks.push_back(Custom("Instructions", manual));
        Write(dir, "Ensamblador ZX.tzx", Assemble(1, 10, info, blocks));
        Art art = ArtOf(info, Scene::Computer);
        art.monitor = {"ORG 50000", "LD HL,16384", "LD DE,16385", "LD BC,6911",
                       "LD (HL),L", "LDIR",        "RET"};
        art.blurb = "Ensamblador de dos pasadas y monitor de código máquina en una sola carga. "
                    "Etiquetas de hasta seis letras, expresiones, volcado en hexadecimal y "
                    "desensamblado de la ROM. Con manual de cuarenta páginas.";
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Unfolded);
    }
    {
        Info info{.name = "Editor de Textos",
                  .publisher = "Microbyte Ediciones",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Utilidad: procesador de textos",
                  .origin = "Original"};
        Bytes doc = Cp("Bienvenido al Editor de Textos.\rEste documento de ejemplo se carga "
                       "con la opción L del menú.\r");
        std::vector<Bytes> blocks = StandardLoad("EDITOR", 30000, 14000, false);
        blocks.push_back(Custom("ZX-Edit document", Byte(0) + doc));
        Write(dir, "Editor de Textos.tzx", Assemble(1, 13, info, blocks));
    }
    {
        Info info{.name = "Copión 48",
                  .publisher = "Erizo Soft",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Utilidad: copiador",
                  .loader = "Grabación directa",
                  .origin = "Original",
                  .comments = "Sólo para copias de seguridad."};
        Bytes samples;
        for (int i = 0; i < 4000; ++i)
            samples += static_cast<char>((i / 3) % 2 ? 0xFF : 0x00);
        std::vector<Bytes> blocks{DirectRecording(samples),
                                  Snapshot(SnapshotType::SNA, Sna48("copion"))};
        Write(dir, "Copion 48.tzx", Assemble(1, 13, info, blocks));
        Art art = ArtOf(info, Scene::Computer);
        art.monitor = {"COPION 48",     "", "BLOQUE 1 DE 4",  "BYTES: pantalla",
                       "LONGITUD 6912", "", "PULSE UNA TECLA"};
        ScreenFile(dir, art);
    }
    {
        Info info{.name = "Pinta Píxel",
                  .publisher = "Erizo Soft",
                  .author = "Ana Belén Sáez",
                  .year = "1987",
                  .lang = "Español",
                  .type = "Utilidad: gráficos",
                  .price = "1.500 pts",
                  .origin = "Original",
                  .comments = "Con la pantalla de carga y la carátula dentro de la cinta."};
        std::vector<Bytes> blocks = StandardLoad("PINTA", 32000, 12000, false);
        blocks.push_back(
            Custom("Spectrum Screen", ScreenData(Cp("Pantalla de presentación"), "pinta")));
        blocks.push_back(Custom("Spectrum Screen", ScreenData("", "pinta2")));
        blocks.push_back(Custom("Picture", PictureData(Cp("Carátula delantera"), "pinta")));
        blocks.push_back(Custom("Picture", PictureData("", "pinta-b")));
        blocks.push_back(Custom("Palette Data", Bytes("\x00\x07\x02\x05", 4)));
        Write(dir, "Pinta Pixel.tzx", Assemble(1, 13, info, blocks));
        const Art art = ArtOf(info, Scene::Computer); // nothing on its screen but the colours
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Front);
    }
    {
        Filler f("curso");
        BasicProgram p;
        p.Line(10, Str(tok::CLS) + ":" + tok::PRINT + "\"CURSO DE BASIC - LECCION 1\"");
        p.Line(20, Str(tok::REM) + "Las variables");
        p.Line(30, Str(tok::POKE) + Num(23658) + "," + Num(8));
        p.Line(40, Str(tok::LOAD) + "\"\"" + tok::CODE);
        Write(dir, "Curso de BASIC.tap",
              TapEntry(RomHeader(RomType::Program, "CURSO 1",
                                 static_cast<std::uint16_t>(p.Get().size()), 10,
                                 static_cast<std::uint16_t>(p.Get().size()))) +
                  TapEntry(RomData(p.Get())) +
                  TapEntry(RomHeader(RomType::Code, "ejemplos", 1500, 40000, 32768)) +
                  TapEntry(RomData(f.Code(1500))));
    }
}

void Varios(const fs::path& dir) {
    {
        // A tape that carries its own loading screen and has no screen file
        // beside it: the main window shows the screen from inside the tape.
        Info info{.name = "Tesoro del Faraón",
                  .publisher = "Grupo Eco",
                  .year = "1985",
                  .lang = "Español",
                  .type = "Arcade",
                  .origin = "Original"};
        const Art art{.title = "Tesoro del Faraón",
                      .publisher = "Grupo Eco",
                      .year = "1985",
                      .scene = Scene::Storm};
        auto blocks = StandardLoad("FARAON", 26000, 12000, false);
        blocks.insert(blocks.begin() + 2,
                      {Standard(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)),
                       Standard(RomData(LoadingScreenOf(art).Encode()))});
        Write(dir, "Tesoro del Faraon.tzx", Assemble(1, 13, info, blocks));
    }
    {
        // Ranas Saltarinas again, from another archive: a newer format, its
        // title text spelled otherwise, a pause more and one byte of the code
        // changed (its checksum no longer adds up). The two tapes are what
        // "Comparar cintas" is for.
        auto blocks = StandardLoad("RANAS", 28000, 9000, false);
        blocks.insert(blocks.begin(), Text("Ranas Saltarinas (c) 1984 Erizo Soft"));
        blocks.insert(blocks.begin() + 3, Pause(2000));
        blocks.back()[4000] = static_cast<char>(blocks.back()[4000] ^ 0x10);
        Write(dir, "Ranas Saltarinas.tzx", Assemble(1, 13, {}, blocks));
    }
    {
        Info info{.name = "Demo Musical",
                  .publisher = "Grupo Eco",
                  .author = "Eco & Sonia",
                  .year = "1991",
                  .lang = "Sin texto",
                  .type = "Demo",
                  .price = "Gratuito",
                  .origin = "Dominio público"};
        Filler f("demo");
        std::vector<Bytes> blocks{GroupStart("Intro")};
        auto load = StandardLoad("DEMO", 32768, 8000);
        blocks.insert(blocks.end(), load.begin(), load.end());
        blocks.push_back(GroupEnd());
        blocks.push_back(MessageBlock("Press any key", 3));
        blocks.push_back(LoopStart(4));
        blocks.push_back(PureData(f.Code(600), 100));
        blocks.push_back(PureTone(1000, 200));
        blocks.push_back(LoopEnd());
        Write(dir, "Demo Musical.tzx", Assemble(1, 13, info, blocks));
        const Art art = ArtOf(info, Scene::Music);
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Box);
    }
    {
        Info info{.name = "Revista Microbyte nº 12",
                  .publisher = "Microbyte Ediciones",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Revista en cinta",
                  .price = "450 pts",
                  .origin = "Original",
                  .comments = "Programas de los lectores: Frontón, Serpiente y Agenda."};
        std::vector<Bytes> blocks;
        for (const char* name : {"FRONTON", "SERPIENTE", "AGENDA"}) {
            blocks.push_back(GroupStart(name));
            blocks.push_back(Text(Cp("Programa enviado por un lector")));
            auto load = StandardLoad(name, 30000, 3000 + std::string(name).size() * 400, false);
            blocks.insert(blocks.end(), load.begin(), load.end());
            blocks.push_back(GroupEnd());
            blocks.push_back(Pause(1500));
        }
        Write(dir, "Revista Microbyte 12.tzx", Assemble(1, 13, info, blocks));
        Art art = ArtOf(info, Scene::Computer);
        art.monitor = {"MICROBYTE Nº 12", "", "1 FRONTON",  "2 SERPIENTE",
                       "3 AGENDA",        "", "ELIJA (1-3)"};
        ScreenFile(dir, art);
    }
    {
        Info info{.name = "Cinta sin programas",
                  .comments = "Sólo la información de archivo: una cinta que no carga nada."};
        Write(dir, "Cinta Vacia.tzx", Assemble(1, 13, info, {}));
    }
    {
        Filler f("tetrix");
        Bytes program = LoaderProgram(29999, 30000, true);
        Write(dir, "Tetrix.tap",
              TapEntry(RomHeader(RomType::Program, "TETRIX",
                                 static_cast<std::uint16_t>(program.size()), 10,
                                 static_cast<std::uint16_t>(program.size()))) +
                  TapEntry(RomData(program)) +
                  TapEntry(RomHeader(RomType::Code, "pantalla", kScreenSize, 16384, 32768)) +
                  TapEntry(RomData(LoadingScreen("tetrix"))) +
                  TapEntry(RomHeader(RomType::Code, "TETRIX", 7000, 30000, 32768)) +
                  TapEntry(RomData(f.Code(7000))));
        ScreenFile(dir, Art{.title = "Tetrix",
                            .publisher = "Grupo Eco",
                            .year = "1990",
                            .scene = Scene::Blocks});
    }
    {
        // The last length claims more bytes than the file holds.
        Filler f("roto");
        Bytes tap = TapEntry(RomHeader(RomType::Code, "ROTO", 5000, 32768, 32768)) +
                    TapEntry(RomData(f.Code(5000)));
        Write(dir, "Roto.tap", tap.substr(0, tap.size() - 1200));
    }
    {
        // A title with files in two folders: its tape is in Juegos, this
        // snapshot here, and only here is its screen.
        const Art art{.title = "Castillo Sombrío",
                      .publisher = "Zafiro Software",
                      .year = "1986",
                      .scene = Scene::Castle};
        Write(dir, "Castillo Sombrio.z80",
              Z80v3(Pages48(Ram48(LoadingScreenOf(art).Encode(), "castillo")), false));
        ScreenFile(dir, art);
    }
    {
        // The tape of a magazine's cover recorded as sound: a BASIC loader.
        const Art art{.title = "Rally del Desierto",
                      .publisher = "Zafiro Software",
                      .year = "1988",
                      .scene = Scene::Road};
        const Bytes program = LoaderProgram(29999, 30000, false);
        Write(dir, "Rally del Desierto.voc",
              Voc({RomHeader(RomType::Program, "RALLY", static_cast<std::uint16_t>(program.size()),
                             10, static_cast<std::uint16_t>(program.size())),
                   RomData(program)}));
        ScreenFile(dir, art);
        MapFile(dir, art, MapKind::Track, QSize(1000, 500));
    }
    // The screen of a title whose snapshot is lost: the catalogue still has
    // its file row.
    ScreenFile(dir, Art{.title = "Nave Fantasma",
                        .publisher = "Zafiro Software",
                        .year = "1988",
                        .scene = Scene::Sea});

    // Tapes kept zipped as the public archives hand them out: one with its
    // loading screen, one in a folder of its archive; and the same tape
    // twice under two names.
    {
        Info info{.name = "Caverna Helada",
                  .publisher = "Erizo",
                  .year = "1986",
                  .lang = "Español",
                  .type = "Arcade",
                  .origin = "Original"};
        const Bytes caverna = Assemble(1, 20, info, StandardLoad("CAVERNA", 27000, 15000));
        test::WriteZip((dir / "Caverna Helada.tzx.zip").string(),
                       {{"Caverna Helada.tzx", caverna}});
        Info otro{.name = "Puerto Perdido",
                  .publisher = "Lince Soft",
                  .year = "1988",
                  .lang = "Español",
                  .type = "Aventura",
                  .origin = "Original"};
        test::WriteZip((dir / "Puerto Perdido.zip").string(),
                       {{"cinta/Puerto Perdido.tzx",
                         Assemble(1, 20, otro, StandardLoad("PUERTO", 28000, 9000, false))}});
        Write(dir, "Caverna Helada (copia).tzx", caverna);
    }
}

void Discos(const fs::path& dir) {
    {
        // A +3 disk: a BASIC loader that loads the screen and then the code.
        const Art art{.title = "El Templo Perdido",
                      .publisher = "Topacio Soft",
                      .year = "1990",
                      .scene = Scene::Maze,
                      .machine = "+3"};
        const Bytes screen = LoadingScreenOf(art).Encode();
        Filler f("templo");
        BasicProgram p;
        p.Line(10, Str(tok::BORDER) + Num(0) + ":" + tok::CLEAR + Num(29999));
        p.Line(20, Str(tok::LOAD) + "\"SCREEN\"" + tok::SCREEN);
        p.Line(30, Str(tok::LOAD) + "\"TEMPLO.BIN\"" + tok::CODE);
        p.Line(40, Str(tok::RANDOMIZE) + tok::USR + Num(30000));
        const auto size = [](const Bytes& b) { return static_cast<std::uint16_t>(b.size()); };
        const Bytes code = f.Code(6000);
        Write(dir, "El Templo Perdido.dsk",
              PlusThreeDisk(
                  {{"DISK",
                    Plus3Header(RomType::Program, size(p.Get()), 10, size(p.Get())) + p.Get()},
                   {"SCREEN", Plus3Header(RomType::Code, size(screen), 16384, 0) + screen},
                   {"TEMPLO.BIN", Plus3Header(RomType::Code, size(code), 30000, 0) + code}}));
        ScreenFile(dir, art);
        InlayFile(dir, art, InlayShape::Front);
        CodeSheetFile(dir, art, CodeKind::Letters);
    }
    {
        // TR-DOS: "boot" runs first; a BASIC file ends in 0x80 0xAA and its
        // start line.
        const Art art{.title = "Batalla Naval",
                      .publisher = "Lince Soft",
                      .year = "1991",
                      .scene = Scene::Battle,
                      .machine = "128K"};
        const Bytes screen = LoadingScreenOf(art).Encode();
        Filler f("naval");
        BasicProgram p;
        p.Line(10, Str(tok::BORDER) + Num(0) + ":" + tok::CLEAR + Num(29999));
        p.Line(20, Str(tok::RANDOMIZE) + tok::USR + Num(15619) + ":" + tok::REM + ":" + tok::LOAD +
                       "\"pantalla\"" + tok::CODE);
        p.Line(30, Str(tok::RANDOMIZE) + tok::USR + Num(15619) + ":" + tok::REM + ":" + tok::LOAD +
                       "\"naval\"" + tok::CODE);
        p.Line(40, Str(tok::RANDOMIZE) + tok::USR + Num(30000));
        Bytes boot = p.Get() + "\x80\xAA";
        Le16(boot, 10);
        Write(dir, "Batalla Naval.trd",
              TrDosDisk("NAVAL", {{"boot", 'B', static_cast<std::uint16_t>(p.Get().size()), boot},
                                  {"pantalla", 'C', 16384, screen},
                                  {"naval", 'C', 30000, f.Code(8000)}}));
        ScreenFile(dir, art);
    }
}

} // namespace cintal::demo
