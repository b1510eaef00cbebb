// The texts of the inspector's block list, and how far each block reaches.

#include "TestSupport.h"
#include "tape/TZXTape.h"

#include <map>

namespace cintal::test {
namespace {

// clang-format off
const std::map<int, std::string> kKindNames = {
    {0x10, "Bloque estandar"}, {0x11, "Bloque turbo"}, {0x12, "Tono puro"},
    {0x13, "Secuencia de pulsos"}, {0x14, "Datos puros"}, {0x15, "Grabaci\xF3n directa"},
    {0x18, "Grabaci\xF3n CSW"}, {0x19, "Datos generalizados"}, {0x2B, "Nivel de la se\361al"},
    {0x20, "Pausa/detenci\xF3n"}, {0x21, "Inicio de grupo"}, {0x22, "Final de grupo"},
    {0x23, "Salto al bloque"}, {0x24, "Inicio de bucle"}, {0x25, "Final de bucle"},
    {0x26, ""}, {0x27, ""}, {0x28, "Seleccionar bloque"}, {0x2A, "Parar la cinta si 48K"},
    {0x30, "Texto: "}, {0x31, "Mensaje:"}, {0x33, "Tipo de Hardware"},
    {0x34, "Info de Emulaci\xF3n"}, {0x35, "Info personalizada"}, {0x40, "Snapshot"},
    {0x5A, "Block Merge Marker"}};
// clang-format on

using DecoderTest = TapeTest;

TEST_F(DecoderTest, EveryKindReadsWithItsTextAndExactExtent) {
    const auto kinds = EveryKind();
    Bytes image = Tape({});
    for (const auto& k : kinds)
        image += k.bytes;
    TZXTape tape;
    tape.ReadImage(image);

    ASSERT_EQ(tape.Blocks().Count(), std::int64_t(kinds.size()));
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        SCOPED_TRACE("bloque " + std::to_string(i + 1));
        const auto b = tape.Blocks().Item(double(i + 1));
        const int id = static_cast<unsigned char>(kinds[i].bytes[0]);
        EXPECT_EQ(b->IdTipoBloque, id);
        EXPECT_EQ(b->TipoBloque, kKindNames.at(id));
        EXPECT_EQ(b->Descr, kinds[i].descr);
        EXPECT_EQ(b->Data(), kinds[i].bytes);
        EXPECT_EQ(b->LenghtTot, std::int64_t(kinds[i].bytes.size()));
        EXPECT_FALSE(b->CutShort);
    }
    EXPECT_TRUE(tape.Status().Whole());
    // Call sequence and return have no kind name, and say so once each.
    EXPECT_EQ(Shown(), (Boxes{Box("otro"), Box("otro")}));
}

TEST_F(DecoderTest, DamagedPulseBlocksAreKeptAsTheyStandAndSaySo) {
    Bytes shortGeneralized = raw::GeneralizedRom(RomData(2));
    shortGeneralized.replace(1, 4, Le(shortGeneralized.size() - 6, 4));
    shortGeneralized.pop_back();
    const Bytes header = Le(0, 2) + Le(1, 4); // pause, one pilot/sync entry
    const std::vector<std::pair<Bytes, std::string>> cases = {
        {B({0x18}) + Le(3, 4) + B({0xE8, 3, 0x44}), "CSW 68 Hz, compresi\xF3n 0, 0 pulsos"},
        {raw::CswRecording(0, 1, 2, B({5, 5})), "CSW 0 Hz, RLE, 2 pulsos"},
        {raw::CswRecording(44100, 3, 1, B({5})), "CSW 44100 Hz, compresi\xF3n 3, 1 pulso"},
        {shortGeneralized, "Datos: 32 s\xEDmbolos, piloto/sinc.: 2, pausa de 1000 mseg."},
        // 256 symbols of 255 pulses each, in 3 bytes.
        {B({0x19}) + Le(17, 4) + header + B({255, 0}) + Le(0, 4) + B({0, 2, 0, 0, 0}),
         "Datos: 0 s\xEDmbolos, piloto/sinc.: 1, pausa de 0 mseg."},
        // The stream names a fourth symbol of two.
        {B({0x19}) + Le(23, 4) + header + B({1, 2}) + Le(0, 4) + B({0, 2}) + B({0, 1, 0, 0, 2, 0}) +
             B({3, 1, 0}),
         "Datos: 0 s\xEDmbolos, piloto/sinc.: 1, pausa de 0 mseg."},
        // Four billion symbols of one bit in three bytes.
        {B({0x19}) + Le(23, 4) + Le(0, 6) + B({0, 0}) + Le(0xFFFFFFFF, 4) + B({1, 2}) +
             B({0, 1, 0, 0, 2, 0}) + Filler(3),
         "Datos: 4294967295 s\xEDmbolos, piloto/sinc.: 0, pausa de 0 mseg."},
        {B({0x19}) + Le(3, 4) + B({1, 2, 0}),
         "Datos: 0 s\xEDmbolos, piloto/sinc.: 0, pausa de 513 mseg."},
        {B({0x2B}) + Le(1, 4) + B({2}), "Nivel 2"},
        {B({0x2B}) + Le(2, 4) + B({1, 0}), "Nivel 1"}};
    for (const auto& [block, text] : cases) {
        SCOPED_TRACE(text);
        TZXTape tape;
        tape.ReadImage(Tape({block, Pause(7)}));
        EXPECT_TRUE(tape.Status().Whole());
        ASSERT_EQ(tape.Blocks().Count(), 2);
        EXPECT_EQ(tape.Blocks().Item(1)->Descr, text + " (da\361ado)");
        EXPECT_EQ(tape.Blocks().Item(1)->Data(), block);
        EXPECT_EQ(tape.Blocks().Item(2)->Descr, "Pausa de 7 mseg.");
    }
    EXPECT_TRUE(Shown().empty());
}

TEST_F(DecoderTest, ArchiveBlocksFillArchiveInfoAndLaterTextsWin) {
    const Bytes second = Archive({{1, "Ed \xA9"}, {3, "1985"}, {7, " cargador "}}, 0xFFFF);
    TZXTape tape;
    tape.ReadImage(Tape({Archive({{255, "Primera"}, {10, "sin campo"}, {0, "Juego"}, {3, "1984"}}),
                         Pause(100), second, Pause(200)}));

    ASSERT_EQ(tape.Blocks().Count(), 4);
    EXPECT_EQ(tape.Blocks().Item(1)->Descr, "Juego");
    EXPECT_EQ(tape.Blocks().Item(1)->TipoBloque, "Info de archivo");
    EXPECT_EQ(tape.Blocks().Item(3)->Descr, "");
    EXPECT_EQ(tape.Blocks().Item(3)->Data(), second);
    const ArchiveInfo& info = tape.ArchiveInfo();
    const std::vector<std::string> texts = {
        info.iName,  info.iPublisher, info.iAuthor, info.iYear,        info.iLang,    info.iType,
        info.iPrice, info.iSchema,    info.iOrigin, info.iRePublisher, info.iComments};
    EXPECT_EQ(texts, (std::vector<std::string>{"Juego", "Ed \xA9", "", "1985", "", "", "",
                                               " cargador ", "", "", "Primera"}));
}

TEST_F(DecoderTest, CustomInfoTextsByIdAndShortData) {
    const std::vector<std::pair<Bytes, std::string>> cases = {
        {Custom("POKEs           ", B({1, 2, 3})), "Pokes"},
        {Custom("Instructions    ", "Pulse una tecla"), "Instrucciones"},
        {Custom("ZX-Edit document", Filler(30)), "ZX-EDIT Doc"},
        {Custom("Spectrum Screen ", B({5}) + "Hola!" + B({0}) + Filler(6912)),
         "Archivo scr:  Hola!"},
        {Custom("Spectrum Screen ", B({0, 0}) + Filler(6912)), "Archivo scr:  Pantalla de carga"},
        {Custom("Picture         ", B({0, 3}) + "Mapa"), "Imagen Gif: Map"},
        {Custom("Picture         ", B({1, 0}) + Filler(20)),
         "Imagen Jpeg: Car\xE1tula de la cinta"},
        {Custom("Picture         ", B({7, 2}) + "ab"), "Imagen Jpeg: ab"},
        {Custom("Mapa del nivel  ", Filler(4)), "Mapa del nivel  "},
        // Fields the block is too short to hold read as 0; a description
        // never takes bytes from the block behind it.
        {Custom("Spectrum Screen ", {}), "Archivo scr:  Pantalla de carga"},
        {Custom("Spectrum Screen ", B({9}) + "ab"), "Archivo scr:  ab"},
        {Custom("Picture         ", {}), "Imagen Gif: Car\xE1tula de la cinta"},
        {Custom("Picture         ", B({1, 12}) + "xyz"), "Imagen Jpeg: xyz"},
        {Pause(1), "Pausa de 1 mseg."}};
    Bytes image = Tape({});
    for (const auto& c : cases)
        image += c.first;
    TZXTape tape;
    tape.ReadImage(image);

    ASSERT_EQ(tape.Blocks().Count(), std::int64_t(cases.size()));
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE("bloque " + std::to_string(i + 1));
        EXPECT_EQ(tape.Blocks().Item(double(i + 1))->Descr, cases[i].second);
        EXPECT_EQ(tape.Blocks().Item(double(i + 1))->Data(), cases[i].first);
    }
}

} // namespace
} // namespace cintal::test
