-- restoration_generation.lua: which proposals are made. The biogeneric one comes first; if it cannot be made, the Napa one does.

RestorationGeneration = {
    Napa = true,
    Bio = true,
}
