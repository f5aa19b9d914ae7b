-- ka_fit.lua: placing and fitting the proposal. Lengths are metres.

KaFit = {
    -- Level of the pre-positioning [1 to 4].
    Level = 3,

    DistanceMaps = {
        Resolution = 250.0e-6, -- [m]
    },

    BoundingBox = {
        zConstraint = 5.0e-3, -- limit of its height [m]
    },

    PostStepCorrection = {
        bActive = true,
    },

    PostStepCorrectionCorrelation = {
        bActive = true,
        PrepCorrelationDiff = 50.0, -- how far occlusion and preparation are to be apart
        SearchLength = 50.0,        -- how far is searched
        SearchStepLength = 2.5,     -- and in which steps
    },

    InitialPlacement = {
        -- Where the antagonist is considered.
        Antagonist = {
            AnteriorCrown = false,
            PosteriorCrown = true,
        },
        -- Search radii for the height above the preparation, and below the antagonist for anterior and posterior teeth [m].
        searchRadiusPrep = 10.0e-3,
        searchRadiusAntagonistAnt = 2.5e-3,
        searchRadiusAntagonistPost = 4.5e-3,
        -- Largest height to start from, and the least when there is no antagonist [m].
        maxHeight = 20.0e-3,
        minHeightAntagonistAbsent = 5.0e-3,
        -- Offset of posterior crowns [m].
        lateralCrownOffset = 2.0e-3,
        -- Inlays start in the centre of the outline of the tooth.
        useInlayToothBorder = true,
    },

    RigidOptimization = {
        -- Where the antagonist is considered.
        Antagonist = {
            AnteriorCrown = false,
            PosteriorCrown = true,
        },

        -- Limits: translation [m], rotation [degrees], scale [factor]. The least scale was 0.8 in earlier versions.
        translate_max = 10000.0e-6,
        rotate_max = 45.0,
        scale_min = 0.7,
        scale_max = 1.5,

        -- Steps, in the same units.
        step_translate = 100.0e-6,
        step_rotate = 1.0,
        step_scale = 0.005,

        -- Shifts [m].
        ToothPositions = {
            t12 = 0.25e-3, -- from first to second tooth (z)
            t34 = 2.00e-3, -- from third to fourth tooth (y)
            ca9 = 0.80e-3, -- canines lie somewhat higher (z)
        },

        -- CenterDist are metres; everything else weighs one goal against the others.
        Weights = {
            Anterior = {
                x_wConnect = 2.0,
                y_wConnect = 2.0,
                z_wConnect = 2.0,
                z_wConnect1121 = 4.0, -- for teeth 11 and 21
                CenterDist = 3.0e-3,
            },
            Posterior = {
                x_wConnect = 0.0,
                y_wConnect = 1.0,
                z_wConnect = 1.0,
                CenterDist = 6.0e-3,
            },
            Pontic = {
                x_wConnect = 3.0,
                y_wConnect = 3.0,
                z_wConnect = 5.0,
            },
            Contact = 3.0,
            Minimalthickness = 1.0,
            VeneerMinimalGeometry = 3.0,
            VeneerPrepLine = 2.0,
            Center = 1.0,
            CenterDist = 6.0e-3,
            Symmetry = {
                Rotate = 0.5,
                Scale = 4.0,
            },
        },
    },

    CellOptimization = {
        count_iteration = 10,
        distance_max = 1000.0e-6,   -- [m]
        translate_max = 10000.0e-6, -- [m]
        translate_step = 500.0e-6,  -- [m]
        factor_deform = 0.5,        -- deformation
        scale_max = 2.0,            -- [factor]
        angle_max = 30.0,           -- [degrees]
        doInlays = true,            -- whether the method is used for them
        doVeneers = false,
    },

    Plausibility = {
        quality_threshold = 0.50,     -- of the overall quality that the plug-in returns [fraction]
        distance_threshold = 0.80e-3, -- [m]
        cos_angle_threshold = 45.00,  -- [degrees]
        z_height = 10.0e-3,           -- [m]
    },
}
