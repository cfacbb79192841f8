#include "map/bulk_projection.h"

#include "base/processor.h"
#include "map/bulk_projection_avx2.h"
#include "map/bulk_projection_plain.h"

namespace pallomir {

std::span<const ProjectionKernel> ProjectionKernels() {
  static constexpr ProjectionKernel kernels[] = {ProjectPlainly, ProjectByAvx2};
  return std::span(kernels).first(HasAvx2() ? 2 : 1);
}

void ProjectPositions(std::span<DataPoint> rows) {
  static const ProjectionKernel kernel = ProjectionKernels().back();
  kernel(rows);
}

}  // namespace pallomir
