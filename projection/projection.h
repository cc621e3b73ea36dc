#ifndef QSV_PROJECTION_PROJECTION_H
#define QSV_PROJECTION_PROJECTION_H

#include "platform/export.h"

/// Which matrix CProjection::InitMatrix resets. Other values may be passed and select nothing.
enum MATRIX_MODE : int {
    MODEL_MATRIX = 0,       ///< from the world to the eye
    PROJECTION_MATRIX = 1   ///< the perspective
};

/// The way from the world to the screen and back: a model matrix, a perspective, their product and its inverse.
///
/// **Typical use.** InitMatrix(MODEL_MATRIX), the model operations, SetPrjMatrix, BeginTrans(1); then Transform
/// for every world point and Inverse for every picked screen point. A change of the model or of the
/// perspective takes effect at the next BeginTrans.
///
/// **Matrices** are row-major: row r, column c of a 4 x 4 matrix lies at index 4r + c. Points are columns on
/// the right, so translations sit in entries 3, 7 and 11, and the perspective row is 12 to 15.
///
/// **Units.** World coordinates in the host's linear unit, angles in radians, screen coordinates in the units
/// of the bounds given to SetPrjMatrix, depth from -1 at the near plane to +1 at the far plane.
///
/// **Results.** Nothing is validated and nothing throws: a number that is not finite, or a perspective without
/// extent, gives results that are not finite. The same input gives the same bits everywhere.
///
/// **Threads.** Objects share nothing. Transform and Inverse only read the object.
///
/// The formulas, with a picture, are in docs/algorithms/projection.md.
class QSV_API CProjection
{
public:
    /// All matrices are the identity, all screen values 0: until SetPrjMatrix every point lands on (0, 0).
    CProjection();
    CProjection(const CProjection& src);              ///< a copy of all matrices and screen values
    CProjection& operator=(const CProjection& src);   ///< a copy of all matrices and screen values
    virtual ~CProjection();

    /// Loads the identity into the matrix that eMode selects; another value changes nothing.
    void InitMatrix(MATRIX_MODE eMode);

    /// Sets the perspective of an eye at the origin that looks along -z, and the screen mapping: what
    /// lies on the near plane keeps its x and y.
    /// @param dLeft, dRight  x of the view's edges on the near plane; x of the screen's edges
    /// @param dTop, dBottom  y of the view's edges on the near plane; y of the screen's edges
    /// @param dNear, dFar    distances of the near and the far plane from the eye, both above 0
    /// A pair of equal bounds divides by zero.
    void SetPrjMatrix(double dLeft, double dRight, double dTop, double dBottom, double dNear, double dFar);

    /// @name Model operations
    /// Each puts an elementary matrix E in front of the model matrix, M := E * M, so that the operation called
    /// last acts last on a point. (Graphics libraries that multiply on the right do the reverse.) A positive
    /// angle turns y towards z (X), z towards x (Y), x towards y (Z).
    /// @{
    void Translate(double dX, double dY, double dZ);   ///< moves by a vector
    void Scale(double dX, double dY, double dZ);       ///< multiplies each coordinate by its factor
    void RotateX(double dAngle);                       ///< turns about the x axis, y towards z
    void RotateY(double dAngle);                       ///< turns about the y axis, z towards x
    void RotateZ(double dAngle);                       ///< turns about the z axis, x towards y
    /// @}

    /// Takes over the model and the perspective for the transforms that follow.
    /// @param nWithInverse  not 0: Inverse will be used too
    /// @return 1; 0 when the inverse was asked for and the product has a determinant of exactly 0. Transform
    ///         is then ready all the same, and Inverse stays as it was.
    int BeginTrans(int nWithInverse);

    /// World to screen.
    /// @param x, y, z     the world point
    /// @param dScrX, dScrY, dDepth  receive its place; untouched when the result is 0. They may be the
    ///                    variables passed as x, y and z.
    /// @param nInside     receives 1 when the point is in view (the bounds count), else 0
    /// @param nClipMode   1: in view on all six sides; any other value: between the near and the far plane
    /// @return 1, whether the point is in view or not; 0 when it has no image, its weight being exactly 0
    int Transform(const double& x, const double& y, const double& z, double& dScrX, double& dScrY,
                  double& dDepth, int& nInside, int nClipMode);

    /// Screen to world, undoing Transform after a successful BeginTrans(1).
    /// @param dScrX, dScrY, dDepth  a place on the screen, with the depth that Transform gives
    /// @param x, y, z     receive the world point. They may be the variables passed as screen place.
    /// @return 1
    /// @note A place without a world point (a weight of 0) gives values that are not finite.
    int Inverse(const double& dScrX, const double& dScrY, const double& dDepth, double& x, double& y,
                double& z);

    /// @name Data
    /// A host may read them, to hand them to a graphics interface or to store a view.
    /// @{
    double m_ModelMatrix[16];   ///< model
    double m_PrjMatrix[16];     ///< perspective
    double m_TransMatrix[16];   ///< perspective * model, as of the last BeginTrans
    double m_InvMatrix[16];     ///< inverse of it, as of the last successful BeginTrans(1)
    double m_ScrScaleX;         ///< half the width of the view, right - left
    double m_ScrOffsetX;        ///< its centre
    double m_ScrScaleY;         ///< half the height of the view, top - bottom
    double m_ScrOffsetY;        ///< its centre
    /// @}

protected:
    /// Writes the 4 x 4 identity into the 16 doubles at m.
    void InitMatrix(double* m);
    /// Normalized coordinates, -1 .. 1, to the screen.
    void NorToScr(const double& dNorX, const double& dNorY, double& dScrX, double& dScrY);
    /// The screen to normalized coordinates; both 0 when the view has no width or no height.
    void ScrToNor(const double& dScrX, const double& dScrY, double& dNorX, double& dNorY);
    /// v := m * v, for an n x n matrix and n components. Sums run from column 0 to column n-1, starting
    /// at 0. Allocates nothing up to n = 16; beyond it v stays as it is when memory runs out.
    void ApplyMatrix(int n, const double* m, double* v);
    /// c := a * b, for n x n matrices; c must not overlap a or b. Sums start at 0 and run along the rows of a.
    void MatrixMul2(int n, const double* a, const double* b, double* c);

    /// Inverts an n x n matrix.
    /// @param a    the matrix; destroyed
    /// @param inv  receives the inverse, in the same layout as a; untouched on failure
    /// @return the determinant; 0.0 when the matrix is singular or memory runs out
    /// Only an exact 0 counts as singular: a nearly singular matrix has a huge inverse. Cost: n cubed;
    /// allocates nothing up to n = 16.
    double matinv(int n, double* a, double* inv);
    /// Factors an n x n matrix by elimination with scaled partial pivoting (Golub and Van Loan, "Matrix
    /// Computations", 3.4).
    /// @param a   the matrix, row i and column j at index j * n + i; receives the multipliers below the
    ///            diagonal and U on and above it, its rows left where they are
    /// @param ip  n entries; ip[k] receives the row that became the k-th pivot row
    /// @return the determinant; 0.0 when the matrix is singular or memory runs out, a and ip then being
    ///         partly written
    double lu(int n, double* a, int* ip);
};

#endif
