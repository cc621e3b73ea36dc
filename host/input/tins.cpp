#include "host/input/tins.h"

#include "host/exchange/exchange_file.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/input/text_file.h"
#include "host/input/whole_file.h"
#include "host/say.h"
#include "host/system.h"
#include "host/terrain/mesh_to_tin.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <utility>

namespace qsvtin {

namespace {

void TellRepairs(const std::string& path, const MeshRepairs& repairs)
{
    if (repairs.dropped > 0) {
        Note(path + ": " + std::to_string(repairs.dropped) +
             " triangles that use a vertex twice are left out");
    }
    if (repairs.turnedOver) Note(path + ": all triangles run clockwise and are turned over");
}

SurveyLine LineAlong(std::vector<int> vertices)
{
    vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
    SurveyLine line;
    line.vertices = std::move(vertices);
    line.CloseWhereItReturns();
    return line;
}

void AddSurface(const SurfaceData& surface, TinFile& file)
{
    file.surveyLines += surface.breaklines.size();
    const MeshData& mesh = surface.mesh;
    if (mesh.vertices.size() > INT_MAX / 3 || mesh.triangles.size() > INT_MAX / 3) {
        throw Failure(file.path + " has more vertices or triangles than a TIN can hold; cut it into parts");
    }
    MeshRepairs repairs;
    CTin tin = TinFromMesh(mesh, repairs);
    TellRepairs(file.path, repairs);
    if (tin.m_aTri.IsEmpty()) return;
    tin.m_strName = surface.name.c_str();
    file.tins.Add(tin);
    file.stated.push_back({surface.planArea, surface.surfaceArea});
    std::vector<SurveyLine>& lines = file.lines.emplace_back();
    for (const std::vector<int>& vertices : mesh.lines) {
        lines.push_back(LineAlong(vertices));
    }
}

TinFile ReadOthers(const std::string& path)
{
    const ExchangeFile read = ReadExchangeFile(path);
    for (const std::string& remark : read.remarks) {
        Note(path + ": " + remark);
    }
    TinFile file;
    file.path = path;
    file.format = read.format;
    file.unit = read.unit;
    for (const SurfaceData& surface : read.surfaces) {
        AddSurface(surface, file);
    }
    if (file.tins.IsEmpty()) {
        throw Failure(path + " has no triangles; build a surface of points with qsvtin build");
    }
    return file;
}

int FormOf(const std::string& path)
{
    char magic[9] = {};
    std::ifstream(PathOf(path), std::ios::binary).read(magic, sizeof magic);
    if (std::memcmp(magic, "TIN_2.00", sizeof magic) == 0) return 2;
    return std::memcmp(magic, "TIN_1.00", sizeof magic) == 0 ? 1 : 0;
}

// The most bytes that a file of these TINs takes up.
std::uintmax_t LargestSize(const TinFile& file)
{
    std::uintmax_t size = 36;
    for (int i = 0; i < file.tins.GetSize(); ++i) {
        const CTin& tin = file.tins[i];
        size += file.form == 0 ? 0 : file.form == 1 ? 296 : 272;
        size += 24 * static_cast<std::uintmax_t>(tin.m_aVertex.GetSize()) +
                24 * static_cast<std::uintmax_t>(tin.m_aTri.GetSize()) +
                4 * static_cast<std::uintmax_t>(tin.m_aBoundary.GetSize());
        if (file.form == 2) size += 8 * static_cast<std::uintmax_t>(tin.m_aVertex.GetSize());
    }
    return size;
}

TinFile ReadTinFile(const std::string& path)
{
    RequireRegularFile(path);
    TinFile file;
    file.path = path;
    file.form = FormOf(path);
    const std::string what =
        file.form == 0
            ? " is no TIN file, or damaged; give one that qsvtin build made, or " + ExchangeExtensions()
            : " is damaged or cut short; make it again from its source";
    if (!CTin::ReadBIN_VER2(path.c_str(), file.tins)) throw Failure(path + what);
    std::error_code unknown;
    if (std::filesystem::file_size(PathOf(path), unknown) > LargestSize(file)) throw Failure(path + what);
    if (file.tins.IsEmpty()) throw Failure(path + " holds no TIN");
    if (file.form == 0) file.tins[0].m_strName = StemOf(path).c_str();
    return file;
}

std::optional<int> NumberOf(const TinFile& file, const std::string& wanted)
{
    int number = 0;
    const char* const end = wanted.data() + wanted.size();
    const auto read = std::from_chars(wanted.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    if (number < 1 || number > file.tins.GetSize()) return std::nullopt;
    return number - 1;
}

}   // namespace

TinFile ReadTins(const std::string& path)
{
    if (IsExchangeFile(path)) return ReadOthers(path);
    return ReadTinFile(path);
}

void TellLinesLeftOut(const TinFile& file, bool keepsLines)
{
    std::size_t lines = 0;
    for (const std::vector<SurveyLine>& ofOne : file.lines) {
        lines += ofOne.size();
    }
    if (lines > 0 && !keepsLines) {
        Note(file.path + ": breaklines left out: " + std::to_string(lines) +
             "; only qsvtin convert keeps them, in LandXML, DXF, GeoJSON and OBJ");
    }
    if (file.surveyLines > 0) {
        Note(file.path + ": breaklines of the survey left out: " + std::to_string(file.surveyLines) +
             "; qsvtin build takes them");
    }
}

std::string DescribeForm(const TinFile& file)
{
    switch (file.form) {
    case 0: return "single TIN";
    case 1: return "collection, version 1";
    case 2: return "collection, version 2";
    default: return file.format;
    }
}

int ChooseTin(const TinFile& file, const std::string& wanted)
{
    const int count = file.tins.GetSize();
    if (wanted.empty()) {
        if (count > 1) {
            Note(file.path + " holds " + std::to_string(count) + " TINs; this is the first, " +
                 QuotedName(file.tins[0].m_strName.GetString()) + " (--tin to choose)");
        }
        return 0;
    }
    if (const auto number = NumberOf(file, wanted)) return *number;
    int found = -1;
    for (int i = 0; i < count; ++i) {
        if (file.tins[i].m_strName != wanted.c_str()) continue;
        if (found >= 0) {
            throw Failure("--tin " + wanted + ": more than one TIN of " + file.path +
                              " has this name; give its number, see qsvtin info",
                          Failure::BadUsage);
        }
        found = i;
    }
    if (found < 0) {
        throw Failure("--tin " + wanted + ": " + file.path +
                          " has no TIN of this name, and numbers go from 1 to " + std::to_string(count) +
                          "; see qsvtin info",
                      Failure::BadUsage);
    }
    return found;
}

void RequireUsable(const TinFile& file, int index)
{
    const CTin& tin = file.tins[index];
    if (tin.m_aTri.IsEmpty()) throw Failure(NameIn(file, index) + " has no triangles");
    CArray<CMeshFault> faults;
    FindMeshFaults(tin, faults, INT_MAX);
    for (int i = 0; i < faults.GetSize(); ++i) {
        const MESH_FAULT kind = faults[i].m_eKind;
        if (kind == MESH_FAULT_VERTEX_INDEX || kind == MESH_FAULT_NEIGHBOR_INDEX ||
            kind == MESH_FAULT_COORDINATE) {
            throw Failure(
                NameIn(file, index) + " is damaged (" + GetMeshFaultText(kind) + "); see qsvtin check" +
                (kind == MESH_FAULT_NEIGHBOR_INDEX ? ", and convert --relink to mend its links" : ""));
        }
    }
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        const CXYZ& p = tin.m_aVertex[v];
        if (!IsCoordinate(p.x) || !IsCoordinate(p.y) || !IsCoordinate(p.z)) {
            throw Failure(NameIn(file, index) + ": vertex " + std::to_string(v) +
                          " has a coordinate too large to compute with");
        }
    }
}

std::string NameIn(const TinFile& file, int index)
{
    if (file.tins.GetSize() == 1) return file.path;
    return file.path + ", TIN " + std::to_string(index + 1);
}

}   // namespace qsvtin
