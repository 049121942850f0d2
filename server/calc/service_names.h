// What the component's services are called in LibreOffice; packaging/oxt names them, too.
#pragma once

namespace qva::calc {

inline constexpr char kObjectFactory[] = "QVA_Varnholt.ObjectFactory";
inline constexpr char kReportJob[] = "QVA_Varnholt.ReportJob";
inline constexpr char kMenuJob[] = "QVA_Varnholt.MenuJob";
inline constexpr char kPublishedObject[] = "QVA_Varnholt.PublishedObject";

/// LibreOffice's own name of the service that Basic's CreateObject asks.
inline constexpr char kOleObjectFactory[] = "com.sun.star.bridge.OleObjectFactory";

}  // namespace qva::calc
