#ifndef QSV_GRID3DSPHERE_GRID_3D_SPHERE_H
#define QSV_GRID3DSPHERE_GRID_3D_SPHERE_H

#include "base/calc_xyzhv.h"
#include "base/dist.h"
#include "base/polyline.h"
#include "base/xyz.h"
#include "platform/afx_array.h"
#include "platform/afx_point.h"
#include "platform/afx_string.h"
#include "platform/export.h"

/// How an instrument counts vertical angles: where 0 lies, and whether readings run 0 .. 360 or -180 .. 180.
///
///                         zenith  horizon  nadir   10 degrees beyond the zenith
///     ZENITH_0_FULL            0       90    180   350
///     ZENITH_0_SIGNED          0       90    180   -10
///     HORIZON_0_FULL          90        0    270   100
///     HORIZON_0_SIGNED        90        0    -90   100
///     NADIR_0_FULL           180       90      0   190
///     NADIR_0_SIGNED         180       90      0  -170
enum ZENITH_MODE : int {
    ZENITH_0_FULL = 0,   ///< 0 at the zenith, up to below 360
    ZENITH_0_SIGNED,     ///< 0 at the zenith, above -180 up to 180
    HORIZON_0_FULL,      ///< 0 at the horizon, up to below 360
    HORIZON_0_SIGNED,    ///< 0 at the horizon, above -180 up to 180
    NADIR_0_FULL,        ///< 0 at the nadir, up to below 360
    NADIR_0_SIGNED       ///< 0 at the nadir, above -180 up to 180
};

/// What is constant along a grid line.
enum GRID_LINE : int {
    GRID_LINE_H = 0,   ///< the horizontal angle: half a circle from the nadir to the zenith
    GRID_LINE_V        ///< the vertical angle: a circle at one height
};

/// Which part of a label's text stands at its place; one of each row, added up.
enum GRID_TEXT_ALIGN : int {
    GRID_TEXT_LEFT = 0,     ///< its left end
    GRID_TEXT_CENTER = 1,   ///< its middle, from left to right
    GRID_TEXT_RIGHT = 2,    ///< its right end
    GRID_TEXT_TOP = 0,      ///< its upper edge
    GRID_TEXT_MIDDLE = 4,   ///< its middle, from top to bottom
    GRID_TEXT_BOTTOM = 8    ///< its lower edge
};

/// One line of the grid.
struct CGridLine {
    GRID_LINE m_eKind = GRID_LINE_H;   ///< what is constant along it
    double m_dAngle = 0.0;             ///< the constant angle, degrees, 0 .. 360
    CPolyline m_line;   ///< points in space; closed when it is a line of constant vertical angle
};

/// One text at a grid line or at a pole.
struct CGridLabel {
    CString m_strText;   ///< what the instrument would read there
    int m_nLine = -1;    ///< index of the line it names; -1 at a pole
    double m_dH = 0.0;   ///< horizontal angle of its place, degrees, 0 .. 360
    double m_dV = 0.0;   ///< vertical angle of its place, degrees, 0 .. 360
    CXYZ m_pos;          ///< its place in space, on the line
    CPoint m_point;      ///< where the text starts on the screen, as of the last PlaceLabel
    int m_bPlaced = 0;   ///< 1 when m_point is to be drawn
};

/// A sphere around a station, ruled with lines of constant horizontal and of constant vertical angle.
///
/// **Typical use.** Create3DGridSphere; draw every polyline of m_aLine. For the texts, project m_pos of each label
/// and hand its screen position to PlaceLabel, whenever the view changes; then draw the labels that are
/// placed. The sphere knows no view: any projection will do.
///
/// **Angles** are in degrees everywhere. The horizontal angle is measured from +y towards +x, the vertical angle
/// from the horizontal plane upwards, and both are given as 0 .. 360, so that 30 degrees below the horizon is
/// 330 (see CCalcXYZHV). An operation takes any finite angle. ZENITH_MODE only changes what labels say.
///
/// **Angle polylines** are CPolylines whose vertices hold the horizontal angle in x and the vertical angle in y; z
/// is carried along and not read. Between two vertices both angles change evenly, each the short way
/// round, so that a segment from 350 to 10 crosses north; a difference of exactly 180 is taken upwards.
///
/// **Results.** 1 for success, 0 for failure, described with each member together with the state it leaves.
/// Nothing throws but std::bad_alloc, when memory runs out: const members then leave what they should fill as it
/// was; Create3DGridSphere and assignment leave some lines and labels, safe to use, replace and destroy.
///
/// **Threads.** Objects share nothing. const members only read.
///
/// Formulas and an example of drawing are in docs/algorithms/grid_sphere.md.
class QSV_API CGrid3DSphere
{
public:
    /// No lines, no labels, station at the origin, radius 0; texts left and top aligned, "%.3lf".
    CGrid3DSphere();
    CGrid3DSphere(const CGrid3DSphere& src);              ///< a copy of everything
    CGrid3DSphere& operator=(const CGrid3DSphere& src);   ///< a copy of everything
    ~CGrid3DSphere();

    /// Back to no lines, no labels, station at the origin and radius 0. How texts look is kept.
    void InitData();

    /// Makes all lines and labels anew.
    /// @param station      centre of the sphere
    /// @param dRadius      above 0, in the unit of the station
    /// @param dStepH       degrees from line to line of constant horizontal angle, above 0, at most 360
    /// @param dStepV       degrees from line to line of constant vertical angle, above 0, at most 90
    /// @param eMode        what the labels of vertical angles say
    /// @param dChordError  how far a drawn chord may be from the circle, above 0, in the unit of the station; at
    ///                     most 30 degrees of a line lie between two points whatever it is
    /// @return 1; 0, with the object as after InitData, when an argument is out of its range or not finite,
    ///         the sphere reaches beyond the numbers, or the lines would have more than a million points (each
    ///         line of vertical angle counted like the horizon)
    ///
    /// Lines lie at multiples of the steps: first those of horizontal angle from 0 up to below 360, then those of
    /// vertical angle, counted from the horizon both ways and stored from the lowest to the highest. A step
    /// that does not divide the circle leaves a narrower last gap before 360, or before the poles. A pole is
    /// no line. Each line of horizontal angle runs through both poles.
    ///
    /// Labels: one on each line of horizontal angle, half a step above the horizon; up to four on each line of
    /// vertical angle, in the middle of the gaps that begin at or contain 0, 90, 180 and 270; one at the
    /// zenith, one at the nadir. No label lies where lines cross but those of the poles. None is placed yet.
    /// Cost: linear in the points; the only memory is that of the result.
    int Create3DGridSphere(const CXYZ& station, double dRadius, double dStepH, double dStepV,
                           ZENITH_MODE eMode, double dChordError);

    const CXYZ& GetStation() const;   ///< centre of the sphere
    double GetRadius() const;         ///< 0 when there is no sphere

    /// @name Angles and points
    /// @{

    /// The point of the sphere in a direction; only the coordinates of pt change.
    /// @return 1; 0 when an angle is not finite or there is no sphere (pt is unchanged)
    int GetXYZ(double dH, double dV, CXYZ& pt) const;
    /// The direction from the station to a point, on the sphere or not. Straight above and below, H is 0.
    /// @return 1; 0 when pt is the station or not finite (nothing is written)
    int GetVH(const CXYZ& pt, double& dV, double& dH) const;
    /// What an instrument reads at a vertical angle, in degrees: 0 .. 360, or above -180 up to 180. Not a number
    /// when dV is not finite. An unknown mode reads as HORIZON_0_FULL.
    static double GetReading(double dV, ZENITH_MODE eMode);
    /// @}

    /// @name Lines
    /// @{

    /// One line of the grid, at any angle, as fine as the sphere's chord error asks for.
    /// @param eKind   what is constant
    /// @param dAngle  the constant angle. A vertical angle of 90 gives a closed line of coinciding points.
    /// @param line    receives the points in space
    /// @return 1; 0 when there is no sphere, the kind is unknown, the angle is not finite or the line would have
    ///         more than a million points (line is unchanged)
    int MakeGridLine(GRID_LINE eKind, double dAngle, CPolyline& line) const;
    /// Puts vertices into an angle polyline until every chord on the sphere is within the chord error of its
    /// segment, and none spans more than 30 degrees.
    /// @param polyHV       angle polyline, open or closed; the closing segment is divided too
    /// @param polyDivided  receives its vertices and the new ones, all brought into 0 .. 360. A new vertex has the
    ///                     z and the code of the one before it. May be the same object.
    /// @return 1; 0 when there is no sphere, an angle is not finite or the result would have more than a million
    ///         vertices (polyDivided is unchanged)
    int DevidePolyHV(const CPolyline& polyHV, CPolyline& polyDivided) const;
    /// The points of the sphere at the vertices of an angle polyline; codes and closing stay.
    /// @param polyXYZ  receives the points; may be the same object
    /// @return 1; 0 when there is no sphere or an angle is not finite (polyXYZ is unchanged)
    int CalcPolyHV2XYZ(const CPolyline& polyHV, CPolyline& polyXYZ) const;
    /// @}

    /// @name Labels
    /// @{

    /// Changes what labels of vertical angles say. @return 1; 0 for an unknown mode (nothing changes)
    int SetZenithMode(ZENITH_MODE eMode);
    ZENITH_MODE GetZenithMode() const;   ///< as last set
    /// Changes how numbers are written in labels. @return 1; 0 for an unknown format (nothing changes)
    int SetNumberFormat(NUMBER_FORMAT eFormat);
    NUMBER_FORMAT GetNumberFormat() const;   ///< as last set
    /// Sets which part of its text stands at a label's place, from the next PlaceLabel on.
    /// @param nAlign  of GRID_TEXT_LEFT, CENTER, RIGHT one, plus of TOP, MIDDLE, BOTTOM one
    /// @return 1; 0 for another value (nothing changes)
    int SetTextAlign(int nAlign);
    int GetTextAlign() const;   ///< as last set

    /// Gives a label its place on the screen.
    /// @param nLabel        index into m_aLabel
    /// @param dScrX, dScrY  where m_pos of the label is on the screen, in pixels
    /// @param nTextWidth, nTextHeight  size of its text in pixels; 0 when the host's own drawing aligns it. The height
    ///                      is negative on a screen whose y grows upwards.
    /// @return 1, m_point being the top left corner of the text, to the nearest pixel; 0 when the index is out of
    ///         range, or the place is not finite or not within the numbers of a CPoint (the label is hidden)
    int PlaceLabel(int nLabel, double dScrX, double dScrY, int nTextWidth, int nTextHeight);
    /// Marks a label as not to be drawn. @return 1; 0 when the index is out of range
    int HideLabel(int nLabel);
    /// @}

    CArray<CGridLine> m_aLine;     ///< those of horizontal angle, then those of vertical angle
    CArray<CGridLabel> m_aLabel;   ///< in the order of their lines, then the nadir's and the zenith's

private:
    void MakeLines(double dStepH, double dStepV);
    void MakeLabels(double dStepH, double dStepV);
    void AddLabel(int nLine, double dH, double dV);
    void UpdateTexts();

    CXYZ m_station;
    double m_dRadius = 0.0;
    double m_dChordError = 0.0;
    ZENITH_MODE m_eZenithMode = ZENITH_0_FULL;
    NUMBER_FORMAT m_eNumberFormat = NUMBER_FIXED;
    int m_nTextAlign = GRID_TEXT_LEFT + GRID_TEXT_TOP;
};

#endif
