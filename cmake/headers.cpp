// Gives the precompiled headers a translation unit to belong to.
