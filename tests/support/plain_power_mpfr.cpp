// Powers rounded to single precision, with arbitrary precision as the judge.
#include "plain.h"

#include <mpfr.h>

namespace plain
{
float powerExactly(double base, double exponent)
{
    // Rounded to 24 bits once; fitting that to the exponents of float knows from the direction which way it went.
    const mpfr_exp_t lowest = mpfr_get_emin();
    const mpfr_exp_t highest = mpfr_get_emax();
    mpfr_t x;
    mpfr_t y;
    mpfr_t power;
    mpfr_init2(x, 53);
    mpfr_init2(y, 53);
    mpfr_init2(power, 24);
    mpfr_set_d(x, base, MPFR_RNDN);
    mpfr_set_d(y, exponent, MPFR_RNDN);
    int direction = mpfr_pow(power, x, y, MPFR_RNDN);
    mpfr_set_emin(-148);
    mpfr_set_emax(128);
    direction = mpfr_check_range(power, direction, MPFR_RNDN);
    mpfr_subnormalize(power, direction, MPFR_RNDN);
    mpfr_set_emin(lowest);
    mpfr_set_emax(highest);
    const float result = mpfr_get_flt(power, MPFR_RNDN);
    mpfr_clears(x, y, power, static_cast<mpfr_ptr>(nullptr));
    return result;
}

double powerToDouble(double base, double exponent)
{
    mpfr_t x;
    mpfr_t y;
    mpfr_inits2(53, x, y, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_d(x, base, MPFR_RNDN);
    mpfr_set_d(y, exponent, MPFR_RNDN);
    mpfr_pow(x, x, y, MPFR_RNDN);
    const double result = mpfr_get_d(x, MPFR_RNDN);
    mpfr_clears(x, y, static_cast<mpfr_ptr>(nullptr));
    return result;
}

float exponentialToSingle(double exponent)
{
    mpfr_t x;
    mpfr_t result;
    mpfr_init2(x, 53);
    mpfr_init2(result, 24);
    mpfr_set_d(x, exponent, MPFR_RNDN);
    mpfr_exp(result, x, MPFR_RNDN);
    const float single = mpfr_get_flt(result, MPFR_RNDN);
    mpfr_clears(x, result, static_cast<mpfr_ptr>(nullptr));
    return single;
}
} // namespace plain
