#pragma once

// Words of which the demonstration agency is made. Towns, streets and firms are invented, the zip codes are
// of a range that no post office uses, and so are the telephone numbers.
namespace kv::demo {

inline constexpr const char* kLastNames[] = {
    "Abbott",   "Aldana",   "Amsel",   "Ardley",     "Ashby",   "Baird",   "Balint",   "Barlow",  "Becker",
    "Belmonte", "Benoit",   "Birch",   "Bolton",     "Brandt",  "Briscoe", "Calder",   "Camacho", "Carver",
    "Castell",  "Chan",     "Clement", "Conroy",     "Corbin",  "Cruz",    "Dalton",   "Danvers", "Delgado",
    "Dorsey",   "Draper",   "Dunn",    "Easton",     "Eckhart", "Ellery",  "Espada",   "Fairley", "Farrow",
    "Fenton",   "Figueroa", "Finch",   "Fontaine",   "Galvan",  "Garner",  "Gentry",   "Gilmore", "Granger",
    "Greer",    "Guerra",   "Haddad",  "Hale",       "Hanley",  "Harlan",  "Hayward",  "Hendrix", "Holm",
    "Ibarra",   "Ingram",   "Jarvis",  "Jensen",     "Jimenez", "Kaplan",  "Keane",    "Kessler", "Kim",
    "Kowal",    "Lachance", "Landry",  "Lazar",      "Leland",  "Lindahl", "Lomax",    "Lund",    "Mallory",
    "Marsh",    "Mendel",   "Mercer",  "Molina",     "Moreau",  "Nadler",  "Navarro",  "Nguyen",  "Norwood",
    "Oakley",   "Okafor",   "Ortega",  "Osgood",     "Palmer",  "Park",    "Paxton",   "Perrin",  "Petrov",
    "Pruitt",   "Quinlan",  "Quiroga", "Ramsey",     "Randall", "Reyes",   "Ridley",   "Rosario", "Rowan",
    "Salas",    "Sandoval", "Sawyer",  "Schell",     "Serrano", "Shelby",  "Silva",    "Sloane",  "Soto",
    "Stanton",  "Sutter",   "Talbot",  "Tanaka",     "Thorne",  "Tran",    "Trujillo", "Upton",   "Vance",
    "Varga",    "Vega",     "Vickers", "Wainwright", "Walden",  "Weller",  "Whitley",  "Winslow", "Wolfe",
    "Yancey",   "Yoder",    "Zamora",  "Zeller"};

inline constexpr const char* kFemaleNames[] = {
    "Ada",      "Adele",    "Agnes",   "Alma",    "Amelia",  "Anita",   "Annette", "Beatriz", "Bernice",
    "Bianca",   "Camille",  "Carmen",  "Cecilia", "Celeste", "Clara",   "Colette", "Cora",    "Dahlia",
    "Daphne",   "Dolores",  "Edith",   "Elena",   "Elsa",    "Emilia",  "Esther",  "Eunice",  "Fatima",
    "Flora",    "Gloria",   "Greta",   "Hazel",   "Ines",    "Irene",   "Isabel",  "Ivy",     "Jolene",
    "Josefina", "Judith",   "Karin",   "Leona",   "Lidia",   "Lucille", "Mabel",   "Marisol", "Martina",
    "Mei",      "Mercedes", "Mildred", "Naomi",   "Nina",    "Noreen",  "Odette",  "Olga",    "Opal",
    "Paloma",   "Pearl",    "Petra",   "Ramona",  "Rosalie", "Ruth",    "Selma",   "Silvia",  "Sonia",
    "Tamara",   "Thelma",   "Tilda",   "Ursula",  "Vera",    "Wilma",   "Yvonne"};

inline constexpr const char* kMaleNames[] = {
    "Abel",   "Albert", "Alonzo",  "Amos",     "Anton",    "Arthur",  "Basil",  "Benito",  "Bernard",
    "Boris",  "Calvin", "Casimir", "Cedric",   "Clifford", "Clyde",   "Cyrus",  "Dexter",  "Diego",
    "Edgar",  "Elias",  "Emil",    "Ernesto",  "Ezra",     "Felix",   "Floyd",  "Gerard",  "Gordon",
    "Gustav", "Harold", "Hector",  "Horace",   "Ignacio",  "Irving",  "Ivan",   "Jasper",  "Joaquin",
    "Julius", "Kenji",  "Lambert", "Leonard",  "Lionel",   "Lloyd",   "Manuel", "Marcel",  "Milton",
    "Morris", "Nestor", "Norman",  "Orlando",  "Oscar",    "Otto",    "Percy",  "Quentin", "Rafael",
    "Ramon",  "Roland", "Rufus",   "Salvador", "Simon",    "Stanley", "Tobias", "Ulrich",  "Vernon",
    "Victor", "Walter", "Wendell", "Wesley",   "Xavier"};

inline constexpr const char* kStreets[] = {
    "Alder Ct",     "Applegate Rd",  "Aspen Way",      "Bayview Ave",   "Beacon St",     "Bellflower Ln",
    "Birchwood Dr", "Brookside Ave", "Canal St",       "Cedar Hill Rd", "Chapel St",     "Cherry Ln",
    "Clover Ct",    "Colonial Dr",   "Cooper Ave",     "Cottage Pl",    "Crescent Blvd", "Dogwood Dr",
    "Dover St",     "Eastlake Ter",  "Elm St",         "Fairmount Ave", "Ferry Rd",      "Fieldstone Way",
    "Foxglove Ln",  "Garden St",     "Glenwood Rd",    "Granite Ave",   "Grove St",      "Harbor View Dr",
    "Hawthorn Pl",  "Hickory Ln",    "Highland Ave",   "Hillcrest Dr",  "Juniper St",    "Keystone Rd",
    "Kingsley Ct",  "Lakeshore Dr",  "Larkspur Way",   "Laurel St",     "Linden Blvd",   "Magnolia Ave",
    "Maple St",     "Meadow Ln",     "Mill Pond Rd",   "Mulberry St",   "Oak Ridge Rd",  "Old Post Rd",
    "Orchard St",   "Park Pl",       "Pinecrest Rd",   "Poplar Ave",    "Prospect St",   "Quarry Rd",
    "Riverbend Dr", "Rosewood Ct",   "Sandpiper Ln",   "Spruce St",     "Summit Ave",    "Sycamore Dr",
    "Thistle Way",  "Union St",      "Valley View Rd", "Vine St",       "Walnut Ave",    "Willow Bend",
    "Windmill Rd",  "Wisteria Ct"};

/// The district is the place of its name in kDistricts.
struct Town {
    const char* name;
    const char* zip;
    int district;
};

inline constexpr const char* kState = "IA";
inline constexpr Town kTowns[] = {
    {"Harrowgate", "51701", 0},      {"Harrowgate", "51702", 0}, {"Harrowgate", "51703", 1},
    {"Harrowgate", "51704", 1},      {"Dunmere", "51712", 2},    {"Elm Ridge", "51715", 2},
    {"Port Callen", "51721", 3},     {"West Arden", "51726", 4}, {"Arden Falls", "51727", 4},
    {"Millbrook Flats", "51733", 5}, {"Stillwell", "51738", 5}};

/// Every number is of an exchange kept for fiction: 555-0100 to 555-0199 of an area code.
inline constexpr int kAreaCodes[] = {319, 515, 563, 641, 712, 309, 402, 507, 605,
                                     608, 618, 660, 715, 785, 815, 816, 913, 920};

}  // namespace kv::demo
