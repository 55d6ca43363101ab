// SPDX-License-Identifier: GPL-3.0-or-later

// Gives the precompiled headers a translation unit to belong to.
