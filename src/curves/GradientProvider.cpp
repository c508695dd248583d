// SPDX-License-Identifier: MIT
#include "GradientProvider.h"

namespace Charts {

GradientProvider::GradientProvider(QObject *parent)
    : QObject(parent)
{
}

GradientProvider::~GradientProvider() = default;

} // namespace Charts
