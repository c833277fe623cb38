/* A first program: the sum of two vectors of 16-bit samples, once saturated and once halved. */
#include <orpsp.h>
#include <stdio.h>

int main(void) {
  const Orp16s a[4] = {1000, 20000, -30000, 7}, b[4] = {234, 20000, -30000, 4};
  Orp16s sum[4], mean[4];

  OrpStatus status = orpsAdd_16s_Sfs(a, b, sum, 4, 0);
  if (status == StsOk) status = orpsAdd_16s_Sfs(a, b, mean, 4, 1); /* times 2^-1, ties to even */
  if (status < 0) {
    fprintf(stderr, "orpSP refused with status %d\n", (int)status);
    return 1;
  }
  printf("%s\n", orpsGetLibVersion()->nameText);
  for (int n = 0; n < 4; ++n) printf("%6d + %6d = %6d, mean %6d\n", a[n], b[n], sum[n], mean[n]);
  return 0;
}
