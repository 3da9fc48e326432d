// A printer description read from a PPD file.
#pragma once
