#include "clockreading.h"

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "registerline.h"

namespace sale {

ClockReading ClockReading::behind(AbstractFrDriver& driver, const RegisterLine& line)
{
    // Over XML it would be a question too many.
    if (!line.isClockRead || !line.isChecked())
        return {};
    try {
        return {driver.getDateTime()};
    } catch (const FrNoConnectionException&) {
        return {{}, true};
    } catch (const BasicException&) {
        return {};
    } catch (...) {
        return {{}, true};
    }
}

} // namespace sale
