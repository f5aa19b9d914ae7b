-- biogeneric.lua: when a tooth is proposed from the biogeneric model.

Biogeneric = {
    -- Least scores of the fitting for such a proposal [fraction].
    MinQuantityValue = 0.30,
    MinQualityValue = 0.50,

    -- Area inside the snake contour below which the snake is not plausible [px^2].
    MinArea = 10000.00,
}
