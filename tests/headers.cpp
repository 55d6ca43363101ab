// Gives the shared precompiled headers a translation unit to belong to.
