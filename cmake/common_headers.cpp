// SPDX-License-Identifier: GPL-3.0-only
// The precompiled headers that all folders share belong to this file; it holds nothing else.
