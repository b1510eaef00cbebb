#pragma once
// The demo collection, folder by folder: which titles it holds, in which
// files, and which pictures lie beside them.

#include <filesystem>

namespace cintal::demo {

void Juegos(const std::filesystem::path& dir);
void Utilidades(const std::filesystem::path& dir);
void Varios(const std::filesystem::path& dir);
void Discos(const std::filesystem::path& dir);

} // namespace cintal::demo
