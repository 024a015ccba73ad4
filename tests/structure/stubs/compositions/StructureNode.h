#pragma once

namespace compositions {
class StructureNode;
}
