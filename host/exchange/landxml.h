#ifndef QSVTIN_EXCHANGE_LANDXML_H
#define QSVTIN_EXCHANGE_LANDXML_H

#include "host/exchange/exchange_file.h"
#include "host/output/safe_file.h"
#include "host/output/text_sink.h"
#include "host/output/write_options.h"

#include <string>

namespace qsvtin {

struct Terrain;

/// Reads the surfaces of a LandXML file, by local names whatever the namespace: data points, breaklines,
/// contours, boundaries, points and faces. Triples are north, east, height. Faces marked as invisible are left
/// out. Of a file without surfaces, its points (CgPoint) are one.
/// @throws Failure when it cannot be read, is no LandXML or is damaged
ExchangeFile ReadLandXml(const std::string& path);

/// Writes terrains as the surfaces of one LandXML 1.2 file.
class LandXmlWriter
{
public:
    /// Begins the document.
    LandXmlWriter(const WriteOptions& options, SafeFile& file);
    /// Points and faces keep their numbers and every digit; of a surveyed terrain, its points, breaklines and outline
    /// are written too. The rings of the outline are edges of triangles, so that nothing is to be trimmed at them.
    void AddSurface(const Terrain& terrain, const std::string& name);
    /// Ends the document.
    void Finish();

private:
    void AddSource(const Terrain& terrain);
    void AddOutline(const Terrain& terrain);
    void AddBreaklines(const Terrain& terrain);
    void AddDefinition(const Terrain& terrain);

    TextSink m_sink;
    std::string m_description;
    LengthUnit m_unit;
};

/// Writes one terrain. Its surface has the name chosen or else that of the TIN or of the file.
void WriteLandXml(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
