-- restoration_parameters.lua: the form of a restoration.

RestorationParameters = {
    -- Bulge angles [degrees].
    EstimateNormals = {
        ExtensionAngleMolar = 40.00,
        ExtensionAngleFront = 30.00,   -- anterior teeth
        ExtensionAngleContact = 10.00, -- on top of either at the proximal contacts
    },

    -- V parameter of the line by which the equator is edited. Must stay below 2, the cusp line. With the fixed value of earlier
    -- versions, 1.25, equators came out too deep.
    Equator = {
        TargetV = 1.40,
        PonticTargetV = 1.40,
    },

    -- V parameter below which nothing is taken from the biogeneric plug-in.
    BioMesh = {
        PosteriorsVMin = 1.2,       -- posterior crowns
        InlaysVMin = 1.2,
        PosteriorsPonticVMin = 1.8, -- posterior pontics
    },

    -- Settling of crowns from the tooth database is allowed, that of bridges forbidden.
    allowSettlingInBiobypass = true,
    noSettlingWithBridges = true,

    -- After the insertion axis has changed.
    InsertionAxis = {
        -- Up to this angle the segmentation is transformed; beyond it is invalid [degrees].
        MaxAngleKeepLastSegmentation = 0.00,
        -- Whether nothing but a transformation is allowed.
        bAllowSegmentationTransformation = false,
    },

    -- Distance from the border of a veneer at which special feature bits are set [px].
    VeneerFeatureLabelOffsetFromRestorationBorder = 20.0,
}
