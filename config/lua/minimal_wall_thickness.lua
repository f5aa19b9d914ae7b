-- minimal_wall_thickness.lua: shape of the minimal body near the preparation margin.

MinimalWallThickness = {
    -- Length of the margin zone [multiple of the minimal thickness]; inlays rise more gently.
    SlopeLength = 1.00,
    SlopeLengthInlay = 1.50,
    SlopeLengthVeneer = 1.00,

    -- Exit angle of the margin zone against the tangent of the surface [degrees, 0 to 90].
    SlopeAngle = 60.00,
    SlopeAngleVeneer = 75.00,

    -- From when on a veneer counts as thin, and so has the steeper exit angle [px].
    AngleThreshold = 20.00,

    -- Largest distance between the preparation margin and the point that the maximum slope of the margin zone is taken from [px].
    SearchLengthMaxAngle = 4.00,

    -- Border whose normals do not count when the slope of the minimal body is measured [px].
    SlopeBorderSizeAngleMeasurement = 4.00,

    -- Offsets of the minimal body [px]: biogeneric veneers; bridges and anterior crowns; implants.
    BioVeneerOffset = 0.60,
    TankOffset = 40.00,
    TankOffsetForImplants = 80.00,
}
