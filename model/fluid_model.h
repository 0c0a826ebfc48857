#pragma once

// The fluid: component data, composition and the van der Waals equation of state of the mixture.
// Kelvin, MPa, cm3/mol and g/cm3 throughout.
#include "model/component_table.h"
#include "model/composition.h"
#include "model/cubic.h"
#include "model/molar_volume.h"
#include "model/van_der_waals.h"
