#ifndef QSV_DOCS_PICTURES_PAGE_H
#define QSV_DOCS_PICTURES_PAGE_H

#include "qsv_3dprocess.h"

#include <string>
#include <vector>

/// A place in plan.
struct Place {
    double x;
    double y;
};

/// One drawing, beside others on a page; takes plan coordinates, y upwards.
class Panel
{
public:
    static constexpr double kWidth = 340.0;
    static constexpr double kHeight = 300.0;

    /// A drawing of what lies between two corners, as large as it fits.
    Panel(const std::string& caption, Place low, Place high);

    void Line(Place a, Place b, const std::string& style);
    void Chain(const std::vector<Place>& places, bool closed, const std::string& style);
    void Circle(Place centre, double radius, const std::string& style);
    void Dot(Place at, const std::string& colour);
    /// Writes a text whose middle is at the place.
    void Text(Place at, const std::string& text, const std::string& colour = "#333", int size = 13);

    const std::string& Svg() const { return m_svg; }

private:
    std::string At(Place p) const;

    Place m_low;
    Place m_high;
    double m_scale;
    std::string m_svg;
};

/// Draws the edges of all triangles.
void DrawMesh(Panel& panel, CTin& tin, const std::string& style = "stroke=\"#777\" fill=\"#f4f1e6\"");

/// The plan position of a vertex.
Place PlaceOf(CTin& tin, int vertex);

/// Writes drawings side by side as one SVG file. @return whether it could be written
bool WritePage(const std::string& path, const std::vector<Panel>& panels);

#endif
